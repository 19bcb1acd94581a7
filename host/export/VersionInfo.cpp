#include <xsi_application.h>
#include <xsi_uitoolkit.h>

SICALLBACK TQ4X_ForPennonVersionInfo_Init(XSI::CRef&)
{
    return XSI::CStatus::OK;
}

SICALLBACK TQ4X_ForPennonVersionInfo_Execute(XSI::CRef&)
{
    LONG answer = 0;
    return XSI::Application().GetUIToolkit().MsgBox("TQ4X_ForPennon\nSoftimage 2013 Plugin 0.5.3",
                                                    XSI::siMsgOkOnly, "TQ4X XSI Plugin Version", answer);
}
