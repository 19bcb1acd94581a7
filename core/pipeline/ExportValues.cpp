#include "pipeline/ExportValues.h"

namespace tq4x
{

ExportValues& GlobalExportValues()
{
    static ExportValues values;
    return values;
}

} // namespace tq4x
