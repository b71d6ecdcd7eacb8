// Storage of the thread's own. MinGW's emulation of thread_local allocates, which the wrapped malloc cannot bear, and
// its suite has no threads that call the harness: there it is plain static storage.
#pragma once

#ifdef _WIN32
#define RUX_PER_THREAD
#else
#define RUX_PER_THREAD thread_local
#endif
