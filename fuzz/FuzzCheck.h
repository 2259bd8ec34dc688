#pragma once

#include <cstdio>
#include <cstdlib>

// A broken invariant is a finding like a crash: say which one and stop, so that the fuzzer keeps the
// input. (assert() would vanish from release builds.)
#define FUZZ_CHECK(condition)                                                                                \
    do {                                                                                                     \
        if (!(condition)) {                                                                                  \
            std::fprintf(stderr, "%s:%d: check failed: %s\n", __FILE__, __LINE__, #condition);               \
            std::abort();                                                                                    \
        }                                                                                                    \
    } while (false)
