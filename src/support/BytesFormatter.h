#pragma once

#include <QString>

/// Shows a number of bytes in decimal units: "999 Bytes", "1.50 KB", "12.35 MB".
///
/// Thread:     pure
/// Units:      bytes; the step between units is 1000
/// Failure:    none; what is not a number or beyond NumberText::largestShown reads "0 Bytes"
class BytesFormatter
{
  public:
    static QString formatBytes(double bytes);
};
