#include "app/RunDriver.h"

int main(int argc, char** argv) { return FTS::RunProgram(argc, argv); }
