#pragma once

#include <xsi_context.h>

namespace XSI
{

/// What the host hands to a page's event callback. The callback asks for a redraw by the attribute "Refresh"
/// and closes the page by "Close". GetSource gives the changed parameter, else the first property that the
/// page shows.
class PPGEventContext : public Context
{
public:
    PPGEventContext() = default;

    PPGEventContext(const CRef& ref) : Context(ref.As(siContextID)) {}

    enum PPGEventID
    {
        siOnInit = 1,          ///< The page was opened.
        siOnClosed = 2,        ///< The page was closed.
        siParameterChange = 3, ///< The user changed a parameter: GetSource.
        siButtonClicked = 4,   ///< The user clicked the button named in the attribute "Button".
        siTabChange = 5,
    };

    PPGEventID GetEventID() const;

    /// The properties that the page shows.
    CRefArray GetInspectedObjects() const;
};

} // namespace XSI
