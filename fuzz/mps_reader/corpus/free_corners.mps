NAME x
OBJSENSE MAX
OBJNAME o2
ROWS
 N o
 N o2
 L c
COLUMNS
 x o 1 o2 2
 x c 0.1
RHS
 r c inf
 r o2 -1
BOUNDS
 MI b x
 UI b x 5
 LI b x -2
ENDATA
