#include "pipeline/ExportOptions.h"

#include "pipeline/MessageLog.h"

#include <memory>
#include <new>

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

ExportOptions* CreateOptions()
{
    LiveRecord().reset();
    LiveRecord().reset(new (std::nothrow) ExportOptions);
    if (!LiveRecord())
        ReportMessage(MessageCode::InternalError);
    return LiveRecord().get();
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
