NAME          fixed
ROWS
 N  cost
 L  row one
 G  r2
 E  r3
COLUMNS
    MARKER                 'MARKER'                 'INTORG'
    my col    cost      1.5            row one   2
    my col    r2        1/3            r3        -2.5e-05
    MARKER                 'MARKER'                 'INTEND'
    y         r2        1e30
RHS
    rhs 1     row one   3              cost      4
    rhs 1     r2        1
RANGES
    rng       r2        -2             r3        3
BOUNDS
 LO bnd       my col    -1
 UP bnd       y         -3
 FR bnd       y
 BV bnd       y
 UP bnd       y         1e31
ENDATA
