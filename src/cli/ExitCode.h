#pragma once

/// How vantorel-cli ends. An interrupted run ends with 128 and the signal's number.
namespace ExitCode {

enum : int {
    Erased = 0,        ///< all that was named
    Failed = 1,        ///< something was not overwritten, or is still there
    NothingErased = 2, ///< wrong usage, nothing to do, or the user said no
    Signal = 128
};

} // namespace ExitCode
