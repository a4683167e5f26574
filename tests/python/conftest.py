"""Shared helpers of the Python package's tests: the corpus, and a skip for a format whose
reader or writer is not in this build yet."""

import os
import pathlib

import lpconv
import pytest

CORPUS = pathlib.Path(os.environ.get("LPCONV_CORPUS", "/nonexistent"))
NOT_BUILT = "not built yet"


def corpus_files():
    """Every LP and MPS file of the standard corpus (empty when the corpus is not there)."""
    if not CORPUS.is_dir():
        return []
    return sorted(p for p in CORPUS.iterdir() if p.suffix in (".lp", ".mps") or p.name.endswith(".gz"))


def read_or_skip(path, **options):
    """lpconv.read, skipping the test while the format's reader is a placeholder."""
    try:
        return lpconv.read(path, **options)
    except lpconv.ParseError as error:
        if NOT_BUILT in error.message:
            pytest.skip(f"the reader of {path} is not built yet")
        raise


def write_or_skip(model, path, **options):
    """Model.write, skipping the test while the format's writer is a placeholder."""
    try:
        model.write(path, **options)
    except RuntimeError as error:
        if NOT_BUILT in str(error):
            pytest.skip(f"the writer for {path} is not built yet")
        raise
