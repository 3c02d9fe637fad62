#pragma once

#include <QByteArray>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

/// What every harness needs. A harness says with `require` what must hold for whatever bytes come
/// in; libFuzzer keeps the bytes for which it does not.
namespace Fuzzer {

inline QByteArray bytesOf(const std::uint8_t *data, std::size_t size)
{
    return {reinterpret_cast<const char *>(data), static_cast<qsizetype>(size)};
}

inline void require(bool isTrue, const char *what)
{
    if (isTrue)
        return;
    std::fprintf(stderr, "Does not hold: %s\n", what);
    std::abort();
}

} // namespace Fuzzer

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size);
