#include "support/ZoneAbbreviations.h"

#include <QLatin1String>

#include <algorithm>
#include <array>

namespace {

struct Zone
{
    QLatin1String abbreviation;
    int minutes; ///< east of UTC
};

constexpr int hours(int whole, int minutes = 0)
{
    return whole * 60 + (whole < 0 ? -minutes : minutes);
}

/// RFC 822, section 5.1, and the abbreviations that the time zone database uses or has used. Where
/// one has several meanings, the one with most people behind it or named in the RFC: IST is India,
/// CST and its like are North America, BST is Britain, GST the Gulf.
const std::array zones = {
    Zone{QLatin1String("ACDT"), hours(10, 30)}, Zone{QLatin1String("ACST"), hours(9, 30)},
    Zone{QLatin1String("ADT"), hours(-3)},      Zone{QLatin1String("AEDT"), hours(11)},
    Zone{QLatin1String("AEST"), hours(10)},     Zone{QLatin1String("AKDT"), hours(-8)},
    Zone{QLatin1String("AKST"), hours(-9)},     Zone{QLatin1String("ART"), hours(-3)},
    Zone{QLatin1String("AST"), hours(-4)},      Zone{QLatin1String("AWST"), hours(8)},
    Zone{QLatin1String("BRST"), hours(-2)},     Zone{QLatin1String("BRT"), hours(-3)},
    Zone{QLatin1String("BST"), hours(1)},       Zone{QLatin1String("CAT"), hours(2)},
    Zone{QLatin1String("CDT"), hours(-5)},      Zone{QLatin1String("CEST"), hours(2)},
    Zone{QLatin1String("CET"), hours(1)},       Zone{QLatin1String("CLST"), hours(-3)},
    Zone{QLatin1String("CLT"), hours(-4)},      Zone{QLatin1String("COT"), hours(-5)},
    Zone{QLatin1String("CST"), hours(-6)},      Zone{QLatin1String("ChST"), hours(10)},
    Zone{QLatin1String("EAT"), hours(3)},       Zone{QLatin1String("EDT"), hours(-4)},
    Zone{QLatin1String("EEST"), hours(3)},      Zone{QLatin1String("EET"), hours(2)},
    Zone{QLatin1String("EST"), hours(-5)},      Zone{QLatin1String("GMT"), hours(0)},
    Zone{QLatin1String("GST"), hours(4)},       Zone{QLatin1String("HDT"), hours(-9)},
    Zone{QLatin1String("HKT"), hours(8)},       Zone{QLatin1String("HST"), hours(-10)},
    Zone{QLatin1String("ICT"), hours(7)},       Zone{QLatin1String("IDT"), hours(3)},
    Zone{QLatin1String("IRST"), hours(3, 30)},  Zone{QLatin1String("IST"), hours(5, 30)},
    Zone{QLatin1String("JST"), hours(9)},       Zone{QLatin1String("KST"), hours(9)},
    Zone{QLatin1String("MDT"), hours(-6)},      Zone{QLatin1String("MEST"), hours(2)},
    Zone{QLatin1String("MET"), hours(1)},       Zone{QLatin1String("MSD"), hours(4)},
    Zone{QLatin1String("MSK"), hours(3)},       Zone{QLatin1String("MST"), hours(-7)},
    Zone{QLatin1String("NDT"), hours(-2, 30)},  Zone{QLatin1String("NPT"), hours(5, 45)},
    Zone{QLatin1String("NST"), hours(-3, 30)},  Zone{QLatin1String("NZDT"), hours(13)},
    Zone{QLatin1String("NZST"), hours(12)},     Zone{QLatin1String("PDT"), hours(-7)},
    Zone{QLatin1String("PET"), hours(-5)},      Zone{QLatin1String("PHT"), hours(8)},
    Zone{QLatin1String("PKT"), hours(5)},       Zone{QLatin1String("PST"), hours(-8)},
    Zone{QLatin1String("SAST"), hours(2)},      Zone{QLatin1String("SGT"), hours(8)},
    Zone{QLatin1String("SST"), hours(-11)},     Zone{QLatin1String("TRT"), hours(3)},
    Zone{QLatin1String("UT"), hours(0)},        Zone{QLatin1String("UTC"), hours(0)},
    Zone{QLatin1String("WAT"), hours(1)},       Zone{QLatin1String("WEST"), hours(1)},
    Zone{QLatin1String("WET"), hours(0)},       Zone{QLatin1String("WIB"), hours(7)},
    Zone{QLatin1String("WIT"), hours(9)},       Zone{QLatin1String("WITA"), hours(8)},
};

} // namespace

std::int64_t ZoneAbbreviations::secondsFromGmt(QStringView abbreviation)
{
    const auto *const found =
        std::find_if(zones.begin(), zones.end(), [abbreviation](const Zone &zone) {
            return abbreviation == zone.abbreviation;
        });
    constexpr std::int64_t secondsPerMinute = 60;
    return found == zones.end() ? 0 : found->minutes * secondsPerMinute;
}
