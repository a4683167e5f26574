#include <lpconv/converter/run.h>
#include <lpconv/programs/huge_page_heap.h>

int main(int argc, char** argv) {
  lpconv::useHugePagesForHeap();
  return lpconv::runConverter(argc, argv);
}
