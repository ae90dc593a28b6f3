// chlist: works on the channel files of a receiver. Its commands are in commands.h.
#include "chlist/program.h"

int main(int argc, char **argv) { return chlist::run_program(argc, argv); }
