#include "engine/WipeDescriptionController.h"

namespace {

QString text(const char *ascii)
{
    return QString::fromLatin1(ascii);
}

} // namespace

void WipeDescriptionController::setupDescriptions()
{
    wipeDescriptions_ = {
        {text(""), text("")},
        {text("1-Pass Zero"),
         text("pass 1: overwrite the entire file data with binary zeros (0x00).")},
        {text("1-Pass Random"),
         text("pass 1: overwrite the entire file data once with pseudo-random bytes.")},
        {text("2-Pass GOST R 50739-95"),
         text("pass 1: overwrite the entire file data with binary zeros (0x00).\n"
              "pass 2: overwrite the entire file data once with pseudo-random bytes.")},
        {text("3-Pass DoD 5220.22-M (E)"),
         text("pass 1: overwrite the entire file data with binary zeros (0x00).\n"
              "pass 2: overwrite the entire file data with high bytes (0xFF).\n"
              "pass 3: overwrite the entire file data with pseudo-random bytes.")},
        {text("4-Pass RAZER"),
         text("pass 1-3: overwrite the entire file data with pseudo-random bytes.\n"
              "pass 4: overwrite the entire file data with binary zeros (0x00).")},
        {text("7-Pass Schneier"),
         text("pass 1: overwrite the entire file data with high bytes (0xFF).\n"
              "pass 2: overwrite the entire file data with binary zeros (0x00).\n"
              "pass 3-7: overwrite the entire file data with pseudo-random bytes.")},
        {text("7-Pass BSI/VSITR"),
         text("pass 1,3,5: overwrite the entire file data with binary zeros (0x00).\n"
              "pass 2,4,6: overwrite the entire file data with high bytes (0xFF).\n"
              "pass 7: overwrite the entire file data with pseudo-random bytes.")},
        {text("7-Pass DoD 5220.22-M (ECE)"),
         text("pass 1-3: overwrite the entire file data with DoD 5220.22-M (E).\n"
              "pass 4: overwrite the entire file data with pseudo-random bytes.\n"
              "pass 5-7: overwrite the entire file data with DoD 5220.22-M (E).")},
        {text("33-Pass Pfitzner Method"),
         text("pass 1-33: overwrite the entire file data with pseudo-random bytes.")},
        {text("35-Pass Gutmann Method"),
         text("pass 1-4: overwrite the entire file data with pseudo-random bytes.\n"
              "pass 5-31: overwrite the entire file data with predefined patterns.\n"
              "pass 32-35: overwrite the entire file data with pseudo-random bytes.")},
    };
}
