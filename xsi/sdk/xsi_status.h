#pragma once

#include <xsi_decl.h>

namespace XSI
{

/// Result of a host operation. The default is success.
class CStatus
{
public:
    enum Code : LONG
    {
        OK = 0,
        False = 1,
        Abort = static_cast<LONG>(0x80004004u),
        Fail = static_cast<LONG>(0x80004005u),
        NotImpl = static_cast<LONG>(0x80004001u),
        Unexpected = static_cast<LONG>(0x8000ffffu),
        MemberNotFound = static_cast<LONG>(0x80020003u),
        AccessDenied = static_cast<LONG>(0x80070005u),
        InvalidArgument = static_cast<LONG>(0x80070057u),
    };

    CStatus() = default;

    CStatus(Code code) : m_code(code) {}

    explicit CStatus(LONG code) : m_code(static_cast<Code>(code)) {}

    Code GetCode() const { return m_code; }

    /// True for every code that is not negative.
    bool Succeeded() const { return static_cast<LONG>(m_code) >= 0; }

    friend bool operator==(const CStatus& a, const CStatus& b) { return a.m_code == b.m_code; }

private:
    Code m_code = OK;
};

} // namespace XSI
