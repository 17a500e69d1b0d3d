#include "runner.h"

int main(int argc, char** argv) { return bench::runElementwise(argc, argv, "vekarith"); }
