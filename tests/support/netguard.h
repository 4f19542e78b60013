#pragma once

#include <string>

// No test may leave the machine. Every program of the tests is linked with a
// connect() and getaddrinfo() of its own that refuse any address outside
// 127.0.0.0/8 (and ::1) and any name but localhost, and count the attempt; a
// test program that made one fails. The real program gets the same guard in
// the end-to-end tests (LD_PRELOAD), which writes its attempts to the file
// named by VELTO_NETGUARD_LOG.
int netGuardRefusals();
std::string netGuardLastRefusal();
