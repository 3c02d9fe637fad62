#pragma once

#include <QStringView>

#include <cstdint>

/// Abbreviations of time zones, each for one fixed offset: what the letters mean wherever and
/// whenever they are written. The system's zone data cannot answer this, since a zone of that name
/// has daylight saving of its own.
///
/// Thread: pure
/// Units:  seconds east of UTC
namespace ZoneAbbreviations {

/// Upper and lower case differ; 0 for an abbreviation that is not known.
std::int64_t secondsFromGmt(QStringView abbreviation);

} // namespace ZoneAbbreviations
