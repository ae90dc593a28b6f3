// For a process that did not start with FAILING_CALL in its environment: a fork of the test program.
#pragma once

#ifdef __cplusplus
extern "C" {
#endif

void count_calls_from_here(void);

#ifdef __cplusplus
}
#endif
