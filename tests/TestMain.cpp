#include "OfficeTest.h"

int main(int argc, char** argv) { return nivarel::testing::RunTests(argc, argv); }
