"""Exact linear programs in Python.

``lpconv.read(path)`` reads an LP, MPS or .opt file (optionally gzip-compressed) into a
``Model`` whose values are exact: Python ``int`` where whole, ``fractions.Fraction`` otherwise
(or ``gmpy2.mpq`` with ``values="mpq"``), with ``math.inf`` and ``-math.inf`` for missing
bounds. ``Model.csr()`` gives the matrix as numpy arrays without a Python object per nonzero;
``Model.to_scipy()`` gives a float64 approximation. A model built in Python is written with
``Model.write(path)``. See docs/python.md.
"""

from ._core import Model, read as _read

__all__ = ["CSR", "LibraryError", "Model", "ParseError", "read"]
__version__ = "0.1.0"


class ParseError(ValueError):
    """A file that cannot be read as a model.

    ``str(error)`` is the message the programs print: the headline
    ``FILE:LINE:COLUMN: error: text``, the line and a caret under the column. ``path``,
    ``line`` and ``column`` give the place (``line`` and ``column`` are 1-based, 0 where the
    message is about the whole file or line), ``message`` the bare text.
    """

    def __init__(self, text, path, line, column, message):
        """Keeps the full text as the exception's argument and the place as attributes."""
        super().__init__(text)
        self.path = path
        self.line = line
        self.column = column
        self.message = message


class LibraryError(RuntimeError):
    """A failure inside the library (an undefined operation such as inf - inf, say).

    The interpreter goes on; the model involved, if any, should be discarded.
    """


from ._core import _set_error_types  # noqa: E402

_set_error_types(ParseError, LibraryError)


def read(path, format=None, names=None, values="fraction"):
    """Reads a model from ``path`` and returns a ``Model``.

    ``format`` is ``"lp"``, ``"mps"`` or ``"opt"``; without it the name's extension decides
    (``.lp``, ``.mps``, ``.opt``, each optionally followed by ``.gz``). ``names`` is the name
    map written beside an .opt file. ``values`` is ``"fraction"`` (ints and Fractions) or
    ``"mpq"`` (``gmpy2.mpq``, where gmpy2 is installed). The GIL is released while the file is
    read, so threads can read several files at once. Raises ``ParseError`` for a malformed or
    unreadable file; notes and warnings of the read are in ``Model.messages``.
    """
    return _read(str(path), format, None if names is None else str(names), values)


class CSR:
    """The matrix of a model in compressed sparse row form, exact.

    ``indptr`` (num_rows + 1 entries) and ``indices`` (the column of each entry) are numpy
    int64 arrays; the entries of row i are ``indptr[i]:indptr[i + 1]``, columns ascending.
    ``numerator`` and ``denominator`` are int64 arrays with each value in lowest terms and a
    positive denominator; an entry whose parts do not fit 64 bits has 0 in both, and its value
    is ``overflow[k]`` (a dict from entry position to value, empty for most models).
    """

    __slots__ = ("shape", "indptr", "indices", "numerator", "denominator", "overflow", "_model")

    def __init__(self, model):
        """The arrays of ``model`` (use ``Model.csr()``)."""
        arrays = model._csr_arrays()
        self._model = model
        self.shape = (model.num_rows, model.num_columns)
        self.indptr = arrays["indptr"]
        self.indices = arrays["indices"]
        self.numerator = arrays["numerator"]
        self.denominator = arrays["denominator"]
        self.overflow = arrays["overflow"]

    @property
    def fits_int64(self):
        """Whether every value is in ``numerator``/``denominator`` (``overflow`` is empty)."""
        return not self.overflow

    def values(self):
        """Every value as a Python object (int, Fraction or mpq, as the model gives them), in
        entry order: one object per nonzero, so use it for small models or when it is needed."""
        return self._model._matrix_values()

    def to_float(self):
        """The values as a float64 numpy array (the nearest doubles, overflow values included)."""
        import numpy

        data = self.numerator / numpy.where(self.denominator == 0, 1, self.denominator)
        for position, value in self.overflow.items():
            data[position] = float(value)
        return data


def _csr(self):
    """The matrix as exact CSR arrays (see ``lpconv.CSR``)."""
    return CSR(self)


def _to_scipy(self):
    """The matrix as a float64 ``scipy.sparse.csr_matrix`` (an approximation of the exact values)."""
    import scipy.sparse

    csr = CSR(self)
    return scipy.sparse.csr_matrix((csr.to_float(), csr.indices, csr.indptr), shape=csr.shape)


def _write(self, path, format=None, names=None):
    """Writes the model to ``path`` as ``"lp"``, ``"mps"`` or ``"opt"`` (``format``, or the
    name's extension: .lp, .mps, .opt; compressed output is not supported). For .opt, ``names``
    is the path of the name map to write beside it. What an .opt file cannot hold (an objective
    constant, a row without a finite side) is reported as a warning. The GIL is released while
    the file is written; do not change the model from another thread meanwhile.
    """
    self._write(str(path), format, None if names is None else str(names))


Model.csr = _csr
Model.write = _write
Model.to_scipy = _to_scipy
