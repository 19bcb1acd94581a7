#pragma once

#include <xsi_progressbar.h>
#include <xsi_siobject.h>

namespace XSI
{

/// Windows of the host.
class UIToolkit : public SIObject
{
public:
    UIToolkit() = default;

    UIToolkit(const CRef& ref) : SIObject(ref.As(siUIToolkitID)) {}

    /// Asks the user. The answer is one of siMsgReturn; the status is a success whatever the answer is.
    CStatus MsgBox(const CString& text, LONG buttons, const CString& title, LONG& answer) const;

    /// Each call gives the same bar, set back to its first state.
    ProgressBar GetProgressBar() const;
};

} // namespace XSI
