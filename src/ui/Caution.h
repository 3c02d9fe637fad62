#pragma once

#include <QString>

#include <vector>

/// What a user should know before it happens. Another text of the same kind is no news.
///
/// Thread: pure
struct Caution
{
    QString text;
    QString kind = text;

    bool operator==(const Caution &) const = default;
};

/// The gravest first.
using CautionTexts = std::vector<Caution>;
