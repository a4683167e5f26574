#include <lpconv/converter/run.h>

int main(int argc, char** argv) { return lpconv::runConverter(argc, argv); }
