// Work that is a process's first: neither memory nor static data nor code has been mapped for it.
#pragma once

namespace bench {

// Loads the channel file of the scene, or reads its records as the floor does, in several processes one after another.
// Each gives the least seconds of the processor that it took one of them.
double first_load();
double first_reading();

// What such a process does and nothing else, when the program was started for it: true then.
bool was_first_run(int argc, char **argv);

}  // namespace bench
