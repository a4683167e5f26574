/* qsopt_read FILE: QSopt_ex's exact (GMP rational) read of an MPS or LP file, for the formats
 * benchmark; prints the rows, columns and nonzeros it read. Built by bench/formats.sh. */
#include <stdio.h>
#include <string.h>

#include <gmp.h>
#include <qsopt_ex/QSopt_ex.h>

int main(int argc, char** argv) {
  if (argc != 2) {
    fprintf(stderr, "usage: qsopt_read FILE\n");
    return 2;
  }
  QSexactStart();
  const size_t n = strlen(argv[1]);
  const char* type = n > 3 && strcmp(argv[1] + n - 3, ".lp") == 0 ? "LP" : "MPS";
  mpq_QSprob p = mpq_QSread_prob(argv[1], type);
  if (p == NULL) {
    fprintf(stderr, "qsopt_read: cannot read %s\n", argv[1]);
    return 1;
  }
  printf("rows %d columns %d nonzeros %d\n", mpq_QSget_rowcount(p), mpq_QSget_colcount(p),
         mpq_QSget_nzcount(p));
  mpq_QSfree_prob(p);
  QSexactClear();
  return 0;
}
