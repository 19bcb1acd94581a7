#include "pipeline/ExportOptions.h"

#include <memory>

namespace tq4x
{
namespace
{

std::unique_ptr<ExportOptions>& LiveRecord()
{
    static std::unique_ptr<ExportOptions> record;
    return record;
}

} // namespace

const ExportOptions& CurrentOptions()
{
    static const ExportOptions defaults;
    return LiveRecord() ? *LiveRecord() : defaults;
}

ExportOptions& CreateOptions()
{
    LiveRecord() = std::make_unique<ExportOptions>();
    return *LiveRecord();
}

ExportOptions* LiveOptions()
{
    return LiveRecord().get();
}

void DestroyOptions()
{
    LiveRecord().reset();
}

} // namespace tq4x
