"""Shared helpers of the Python package's tests: the corpus."""

import os
import pathlib

import lpconv
import pytest

CORPUS = pathlib.Path(os.environ.get("LPCONV_CORPUS", "/nonexistent"))


def corpus_files():
    """Every LP and MPS file of the standard corpus (empty when the corpus is not there)."""
    if not CORPUS.is_dir():
        return []
    return sorted(p for p in CORPUS.iterdir() if p.suffix in (".lp", ".mps") or p.name.endswith(".gz"))
