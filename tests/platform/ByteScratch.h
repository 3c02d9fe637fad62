#pragma once

#include "kit/Scratch.h"

#include <filesystem>
#include <system_error>

/// A Scratch in which names need not be UTF-8: it removes them by their bytes.
class ByteScratch : public Scratch
{
  public:
    ByteScratch() = default;
    ByteScratch(const ByteScratch &) = delete;
    ByteScratch &operator=(const ByteScratch &) = delete;
    ~ByteScratch()
    {
        std::error_code ignored;
        std::filesystem::remove_all(path().toStdString(), ignored);
    }
};
