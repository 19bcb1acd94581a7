#include "pipeline/ParseClassic.h"

#include <locale.h>
#include <stdlib.h>

namespace tq4x
{

double ParseClassic(const char* text, const char** end)
{
    static const locale_t classic = newlocale(LC_ALL_MASK, "C", nullptr);
    char* behind = nullptr;
    const double value = strtod_l(text, &behind, classic);
    *end = behind;
    return value;
}

} // namespace tq4x
