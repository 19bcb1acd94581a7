#pragma once

#include <xsi_ppgitem.h>
#include <xsi_siobject.h>

namespace XSI
{

/// The layout of a property page: a flat list of items, with marks where groups and rows begin and end.
class PPGLayout : public SIObject
{
public:
    PPGLayout() = default;

    PPGLayout(const CRef& ref) : SIObject(ref.As(siPPGLayoutID)) {}

    void Clear();

    PPGItem AddGroup(const CString& caption = CString(), bool isBoxVisible = true, LONG widthPercentage = -1);
    CStatus EndGroup();
    PPGItem AddRow();
    CStatus EndRow();
    PPGItem AddTab(const CString& caption);

    /// The control of a parameter. An empty label stands for the parameter's own.
    PPGItem AddItem(const CString& parameter, const CString& label = CString(),
                    const CString& control = CString());

    /// A list of texts for a parameter: text, value, text, value, ...
    PPGItem AddEnumControl(const CString& parameter, const CValueArray& items,
                           const CString& label = CString(), const CString& control = siControlCombo);

    /// A text field, of several lines if wanted.
    PPGItem AddString(const CString& parameter, const CString& label = CString(), bool isMultiline = false,
                      LONG height = 0);

    /// An empty label stands for the name.
    PPGItem AddButton(const CString& name, const CString& label = CString());
    PPGItem AddStaticText(const CString& text, LONG width = 0, LONG height = 0);
    PPGItem AddSpacer(LONG width = 0, LONG height = 0);

    LONG GetCount() const;
    PPGItem GetItem(LONG index) const;
    /// The first item of this parameter or button; invalid if there is none.
    PPGItem GetItem(const CString& name) const;

    CValue GetAttribute(const CString& name) const;
    CStatus PutAttribute(const CString& name, const CValue& value);
};

} // namespace XSI
