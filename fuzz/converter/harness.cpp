// The whole converter as an AFL++ target: `lpconv_fuzz FILE.lp`, one run per process.
// The run's one documented abort (a NaN coefficient ends in the uncaught
// std::invalid_argument("mpz_set_str")) becomes exit status 3 here, so that every signal the
// fuzzer sees is a finding. A file-size limit keeps huge outputs short and exercises the checked
// writes; SIGXFSZ is ignored so that the limit shows as a failed write.
#include <sys/resource.h>

#include <csignal>
#include <cstdlib>
#include <cstring>
#include <stdexcept>

#include <lpconv/converter/run.h>

int main(int argc, char** argv) {
  std::signal(SIGXFSZ, SIG_IGN);
  const rlimit limit{1 << 20, 1 << 20};
  setrlimit(RLIMIT_FSIZE, &limit);
  try {
    return lpconv::runConverter(argc, argv);
  } catch (const std::invalid_argument& e) {
    if (std::strcmp(e.what(), "mpz_set_str") == 0) std::_Exit(3);
    throw;
  }
}
