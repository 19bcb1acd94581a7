#include "export/HostLog.h"

#include "pipeline/MessageLog.h"

#include <xsi_application.h>

namespace tq4x
{
namespace
{

XSI::siSeverityType HostSeverity(Severity severity)
{
    switch (severity) {
    case Severity::Error:
        return XSI::siErrorMsg;
    case Severity::Warning:
        return XSI::siWarningMsg;
    case Severity::Information:
        return XSI::siInfoMsg;
    }
    return XSI::siInfoMsg; // any other number is information too
}

LogResult ForwardToHost(const std::string& text, Severity severity)
{
    XSI::Application().LogMessage(text.c_str(), HostSeverity(severity));
    return {};
}

} // namespace

void InstallHostLog()
{
    MessageLog::Instance().SetCallback(&ForwardToHost);
}

} // namespace tq4x
