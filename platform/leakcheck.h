#pragma once

// Under AddressSanitizer, makes the exit wait briefly for the process's other
// threads to end before the leak check runs. Qt stops its own worker threads
// (D-Bus, thread pools) in its exit handlers without joining them; a thread
// still releasing its per-thread data when the check runs is reported as a
// leak of that data, now and then. Call first thing in main(); does nothing in
// other builds.
void settleThreadsBeforeLeakCheck();
