"""Reading and writing files: the corpus round trips, exact values against the file's text,
errors with their place, and reads in two threads at once."""

import gzip
import shutil
import threading
from fractions import Fraction

import lpconv
import pytest
from conftest import CORPUS, corpus_files

FILES = corpus_files()


def rebuilt_in_python(model):
    """The same model made again through Python values only."""
    copy = lpconv.Model()
    copy.sense = model.sense
    copy.objective_name = model.objective_name
    copy.constant = model.constant
    objective = model.objective_vector
    for j, name in enumerate(model.column_names):
        copy.add_column(name, model.column_lower[j], model.column_upper[j], objective[j], model.integrality[j])
    for i, name in enumerate(model.row_names):
        copy.add_row(name, model.row(i), model.row_lower[i], model.row_upper[i])
    return copy


FIELDS = ["sense", "objective_name", "constant", "column_names", "row_names", "column_lower", "column_upper",
          "objective_vector", "integrality", "row_lower", "row_upper"]


def differences(a, b):
    """The fields in which two models differ, for a failure's message."""
    out = [name for name in FIELDS if getattr(a, name) != getattr(b, name)]
    out += [f"row {i}" for i in range(min(a.num_rows, b.num_rows)) if a.row(i) != b.row(i)][:5]
    return out


def same_model_read_back(model, path, exact_names):
    """The file at `path` reads back to `model`. A writer must name an unnamed objective, and
    may change names that its format cannot hold (then the values are compared by position)."""
    again = lpconv.read(path)
    if exact_names:
        if model.objective_name == "":
            again.objective_name = ""
        assert again == model, f"{path.name}: {differences(again, model)}"
        return
    named = {"objective_name", "column_names", "row_names"}
    assert [f for f in differences(again, model) if f in FIELDS and f not in named] == []
    a, b = again.csr(), model.csr()
    for array in ("indptr", "indices", "numerator", "denominator"):
        assert (getattr(a, array) == getattr(b, array)).all(), array
    assert a.overflow == b.overflow


def accepted_or_skip(path):
    """The model of a corpus file, or a skip when the readers reject the file (with a placed error)."""
    try:
        return lpconv.read(path)
    except lpconv.ParseError as error:
        assert error.path == str(path) and str(error).startswith(str(path) + ":")
        pytest.skip(f"rejected: {error.message}")


@pytest.mark.skipif(not FILES, reason="the standard corpus is not there (LPCONV_CORPUS)")
@pytest.mark.parametrize("path", FILES, ids=lambda p: p.name)
def test_corpus_round_trip(path, tmp_path):
    model = accepted_or_skip(path)
    rebuilt = rebuilt_in_python(model)
    assert rebuilt == model
    for suffix in (".lp", ".mps"):
        out = tmp_path / ("again" + suffix)
        rebuilt.write(out)
        same_model_read_back(model, out, exact_names=suffix == path.suffix)


def mps_column_entries(path):
    """(column, row) -> exact sum of the COLUMNS entries written for it, from the file's text."""
    entries, section = {}, None
    for line in path.read_text(errors="replace").splitlines():
        if not line.strip() or line.startswith("*"):
            continue
        if not line[0].isspace():
            section = line.split()[0].upper()
            continue
        words = line.split()
        if section != "COLUMNS" or "'MARKER'" in words or len(words) not in (3, 5):
            continue
        for row, text in zip(words[1::2], words[2::2]):
            key = (words[0], row)
            entries[key] = entries.get(key, 0) + Fraction(text)
    return entries


MPS_FILES = [p for p in FILES if p.suffix == ".mps"]


@pytest.mark.skipif(not MPS_FILES, reason="the standard corpus is not there (LPCONV_CORPUS)")
@pytest.mark.parametrize("path", MPS_FILES[::7], ids=lambda p: p.name)
def test_values_equal_the_fraction_of_their_text(path):
    model = accepted_or_skip(path)
    entries = mps_column_entries(path)
    rows = set(model.row_names)
    checked = 0
    for (column, row), expected in list(entries.items())[:: max(1, len(entries) // 50)]:
        if row in rows:
            assert model.row(row).get(column, 0) == expected, (column, row)
            checked += 1
    assert checked > 0 or not entries


MALFORMED = [
    # (file name, text, line, column of the fault)
    ("bad_number.mps", "NAME t\nROWS\n N obj\n L c\nCOLUMNS\n x c 1.2.3\nRHS\nENDATA\n", 6, 6),
    ("bad_number.lp", "Minimize\n obj: x\nSubject To\n c: 2 x <= 0x1A\nEnd\n", 4, 12),
]


@pytest.mark.parametrize("name, text, line, column", MALFORMED, ids=lambda v: v if isinstance(v, str) else "")
def test_malformed_file_gives_its_place(tmp_path, name, text, line, column):
    path = tmp_path / name
    path.write_text(text)
    with pytest.raises(lpconv.ParseError) as caught:
        lpconv.read(path)
    error = caught.value
    assert isinstance(error, ValueError)
    assert (error.path, error.line, error.column) == (str(path), line, column), str(error)
    headline, source_line, caret = str(error).split("\n")
    assert headline == f"{path}:{line}:{column}: error: {error.message}"
    assert source_line == text.split("\n")[line - 1]
    assert caret.index("^") == column - 1
    # the interpreter goes on, and so does the library
    assert lpconv.Model().num_columns == 0


def test_unreadable_and_unknown_files(tmp_path):
    with pytest.raises(lpconv.ParseError) as caught:
        lpconv.read(tmp_path / "missing.lp")
    assert caught.value.path == str(tmp_path / "missing.lp") and caught.value.line == 0
    with pytest.raises(lpconv.ParseError, match="cannot tell the format"):
        lpconv.read(tmp_path / "model.txt")
    with pytest.raises(ValueError, match="format must be"):
        lpconv.read(tmp_path / "model.txt", format="csv")


def test_library_failure_raises_and_the_process_goes_on():
    for _ in range(2):
        with pytest.raises(lpconv.LibraryError, match="^INF - INF is not defined$"):
            lpconv._core._report_failure("INF - INF is not defined")


def test_format_and_gzip(tmp_path):
    model = lpconv.Model()
    model.add_column("x", upper=Fraction(5, 2), objective=1)
    model.add_row("c", {"x": Fraction(1, 3)}, upper=1)
    plain = tmp_path / "model.txt"
    model.write(plain, format="mps")
    again = lpconv.read(plain, format="mps")
    again.objective_name = ""
    assert again == model, differences(again, model)
    packed = tmp_path / "model.mps.gz"
    with open(plain, "rb") as src, gzip.open(packed, "wb") as dst:
        shutil.copyfileobj(src, dst)
    packed_again = lpconv.read(packed)
    packed_again.objective_name = ""
    assert packed_again == model
    with pytest.raises(ValueError, match="compressed"):
        model.write(tmp_path / "out.lp.gz")


@pytest.mark.skipif(len(FILES) < 2, reason="the standard corpus is not there (LPCONV_CORPUS)")
def test_two_threads_read_the_same_models_as_one_after_the_other():
    pair = [CORPUS / "25fv47.mps", CORPUS / "80bau3b.mps"]
    alone = [lpconv.read(p) for p in pair]
    for _ in range(3):
        results = [None, None]

        def work(k):
            results[k] = lpconv.read(pair[k])

        threads = [threading.Thread(target=work, args=(k,)) for k in range(2)]
        for t in threads:
            t.start()
        for t in threads:
            t.join()
        assert results[0] == alone[0] and results[1] == alone[1]
        assert not results[0] == results[1]
