"""Exact values across the boundary: Python -> model -> Python, and through every file format."""

import math
from fractions import Fraction

import lpconv
import pytest

BIG = 2**64 + 1
EDGE_VALUES = [
    0,
    1,
    -1,
    Fraction(-7, 3),
    2**62 - 1,  # the largest inline part
    2**62,  # the first value held as a big number
    2**63 - 1,
    -(2**63),
    BIG,
    -BIG,
    Fraction(1, BIG),
    Fraction(-BIG, 3),
    Fraction(1, 10**30),
]


@pytest.mark.parametrize("value", EDGE_VALUES, ids=repr)
def test_value_comes_back_exactly_with_its_type(value):
    model = lpconv.Model()
    model.add_column("x", lower=value, upper=math.inf, objective=value)
    model.add_row("r", {"x": value if value != 0 else 5}, lower=value)
    got = model.column_lower[0]
    assert got == value
    assert type(got) is (int if Fraction(value).denominator == 1 else Fraction)
    assert model.objective_vector[0] == value
    assert model.row_lower[0] == value
    assert str(Fraction(got)) == str(Fraction(value))  # the Fraction is in lowest terms


@pytest.mark.parametrize(
    "given, expected",
    [
        ("0.1", Fraction(1, 10)),
        ("2.5e-05", Fraction(1, 40000)),
        ("-1/3", Fraction(-1, 3)),
        ("6/-4", None),  # not a form the readers accept
        (0.1, Fraction(0.1)),  # a float is taken as its exact binary value
        (True, 1),
        ("inf", math.inf),
        ("-Infinity", -math.inf),
        (-math.inf, -math.inf),
        (Fraction(6, 4), Fraction(3, 2)),
    ],
    ids=repr,
)
def test_accepted_value_forms(given, expected):
    model = lpconv.Model()
    if expected is None:
        with pytest.raises(ValueError):
            model.add_column("x", upper=given)
        return
    model.add_column("x", upper=given)
    assert model.column_upper[0] == expected


@pytest.mark.parametrize("bad, error", [(math.nan, ValueError), ("abc", ValueError), ("0x10", ValueError),
                                        ([1], TypeError), (None, TypeError), (Fraction(1, 1), None)])
def test_rejected_values(bad, error):
    model = lpconv.Model()
    if error is None:
        model.add_column("x", lower=bad)
        return
    with pytest.raises(error):
        model.add_column("x", lower=bad)
    assert model.num_columns == 0


def test_infinite_matrix_and_objective_entries_are_refused():
    model = lpconv.Model()
    model.add_column("x")
    with pytest.raises(ValueError):
        model.add_row("r", {"x": math.inf})
    with pytest.raises(ValueError):
        model.set_objective("x", -math.inf)
    assert model.num_rows == 0


def test_mpq_values_where_gmpy2_is_installed():
    gmpy2 = pytest.importorskip("gmpy2")
    model = lpconv.Model()
    model.add_column("x", lower=gmpy2.mpq(-BIG, 7), upper=3)
    model.values = "mpq"
    assert model.column_lower == [gmpy2.mpq(-BIG, 7)]
    assert type(model.column_upper[0]) is type(gmpy2.mpq(1, 2))
    assert model.column_upper[0] == 3
    with pytest.raises(ValueError):
        model.values = "float"


def test_empty_model_and_no_columns():
    model = lpconv.Model()
    assert (model.num_columns, model.num_rows, model.num_nonzeros) == (0, 0, 0)
    assert model.objective == {} and model.column_names == [] and model.row_lower == []
    csr = model.csr()
    assert list(csr.indptr) == [0] and len(csr.indices) == 0 and csr.values() == []
    assert model.to_scipy().shape == (0, 0)
    # rows over no columns: n = 0
    model.add_row("empty", {}, lower=-1, upper=1)
    assert list(model.csr().indptr) == [0, 0]
    assert model.to_scipy().shape == (1, 0)
    assert model.row("empty") == {}


def test_csr_arrays_mark_values_beyond_64_bits():
    model = lpconv.Model()
    for name in "abc":
        model.add_column(name)
    model.add_row("r0", {"c": Fraction(-1, 3), "a": 2})
    model.add_row("r1", [("b", BIG), (2, 5), ("b", 1)])
    csr = model.csr()
    assert csr.indptr.dtype.name == "int64" and csr.indices.dtype.name == "int64"
    assert list(csr.indptr) == [0, 2, 4]
    assert list(csr.indices) == [0, 2, 1, 2]
    assert list(csr.numerator) == [2, -1, 0, 5]
    assert list(csr.denominator) == [1, 3, 0, 1]
    assert csr.overflow == {2: BIG + 1} and not csr.fits_int64
    assert csr.values() == [2, Fraction(-1, 3), BIG + 1, 5]
    dense = model.to_scipy().toarray()
    assert dense[0].tolist() == [2.0, 0.0, -1 / 3] and dense[1, 1] == float(BIG + 1)


def edge_model():
    """A model with every kind of edge value, for the file round trips."""
    model = lpconv.Model()
    model.sense = "maximize"
    model.objective_name = "profit"
    model.add_column("x", lower=-math.inf, upper=BIG, objective=Fraction(-1, 3))
    model.add_column("y", lower=Fraction(1, 10), upper=Fraction(1, 10), integer=True)
    model.add_column("z", lower=-BIG, upper=0, objective=BIG)
    model.add_row("c1", {"x": 1, "y": Fraction(-5, 2)}, lower=0, upper=math.inf)
    model.add_row("c2", {"x": -(2**63), "z": Fraction(1, BIG)}, lower=-math.inf, upper=Fraction(7, 10))
    model.add_row("c3", {"y": 3}, lower=Fraction(-1, 3), upper=Fraction(1, 3))
    return model


@pytest.mark.parametrize("suffix", [".lp", ".mps"])
def test_edge_values_survive_a_file(tmp_path, suffix):
    model = edge_model()
    path = tmp_path / ("edges" + suffix)
    model.write(path)
    again = lpconv.read(path)
    assert again == model, path.read_text()


def test_edge_values_survive_an_opt_file_with_names(tmp_path):
    model = edge_model()
    path, names = tmp_path / "edges.opt", tmp_path / "edges.names"
    model.write(path, names=names)
    again = lpconv.read(path, names=names)
    assert again.column_names == model.column_names
    assert again.row(0) == model.row(0) and again.column_upper == model.column_upper
