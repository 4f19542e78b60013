#pragma once

#include <QByteArray>
#include <QString>

#include <cstddef>
#include <cstdint>

// One source per reader: VELTO_FUZZ_TARGET(name) { ... } gets the input as
// bytes. The same source builds two ways: with VELTO_FUZZ_MAIN (scripts/fuzz)
// it is libFuzzer's entry point; otherwise it registers itself, and
// fuzz_tests replays tests/fuzz/seeds/<name>/ and regressions/<name>/
// through it on every test run.

using FuzzFunction = void (*)(const QByteArray &input);

// Replay build: the targets by name. Returns true so it can seed a static.
bool registerFuzzTarget(const char *name, FuzzFunction function);

// What must hold for every input: a crash in the fuzzer, a test failure in the replay.
void fuzzCheckFailed(const char *condition, const char *file, int line);
#define FUZZ_CHECK(condition)                                                                      \
    ((condition) ? void(0) : fuzzCheckFailed(#condition, __FILE__, __LINE__))

// A scratch file for readers that only take a path; the same path every call
// within a process, in a folder of its own that is removed at exit.
QString fuzzScratchFile(const QString &name);
// Writes the bytes there and returns the path.
QString fuzzWriteScratch(const QString &name, const QByteArray &bytes);

#ifdef VELTO_FUZZ_MAIN
#define VELTO_FUZZ_TARGET(name)                                                                    \
    static void fuzz_##name(const QByteArray &input);                                              \
    extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)                        \
    {                                                                                              \
        fuzz_##name(                                                                               \
            QByteArray::fromRawData(reinterpret_cast<const char *>(data), qsizetype(size)));       \
        return 0;                                                                                  \
    }                                                                                              \
    static void fuzz_##name(const QByteArray &input)
#else
#define VELTO_FUZZ_TARGET(name)                                                                    \
    static void fuzz_##name(const QByteArray &input);                                              \
    [[maybe_unused]] static const bool fuzz_registered_##name =                                    \
        registerFuzzTarget(#name, fuzz_##name);                                                    \
    static void fuzz_##name(const QByteArray &input)
#endif
