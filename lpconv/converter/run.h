#pragma once

namespace lpconv {

// The whole conversion: checks the command line, creates the output file beside the input and
// converts. Returns 0 on success; a usage error or a failure ends the process with status 1.
int runConverter(int argc, char** argv);

}  // namespace lpconv
