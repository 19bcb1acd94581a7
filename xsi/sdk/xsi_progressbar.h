#pragma once

#include <xsi_siobject.h>

namespace XSI
{

/// The host's one progress bar: values are held between minimum and maximum.
class ProgressBar : public SIObject
{
public:
    ProgressBar() = default;

    ProgressBar(const CRef& ref) : SIObject(ref.As(siProgressBarID)) {}

    CStatus PutCaption(const CString& caption);
    CStatus PutStatusText(const CString& text);
    CStatus PutVisible(bool isVisible);
    CStatus PutCancelEnabled(bool isEnabled);
    CStatus PutMinimum(LONG minimum);
    CStatus PutMaximum(LONG maximum);
    CStatus PutStep(LONG step);
    CStatus PutValue(LONG value);

    CString GetCaption() const;
    CString GetStatusText() const;
    bool GetVisible() const;
    LONG GetMinimum() const;
    LONG GetMaximum() const;
    LONG GetStep() const;
    LONG GetValue() const;

    bool IsCancelEnabled() const;
    bool IsCancelPressed() const;

    /// Adds the step to the value, up to the maximum, and answers the value.
    LONG Increment();
};

} // namespace XSI
