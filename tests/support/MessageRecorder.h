#pragma once

#include "pipeline/MessageLog.h"

#include <string>
#include <vector>

namespace tq4x::test
{

/// Fills the slot of the message log for the time of a test and keeps what was said, as "E text", "W text" or
/// "I text".
class MessageRecorder
{
public:
    MessageRecorder()
    {
        Messages().clear();
        MessageLog::Instance().SetCallback(&Record);
    }

    MessageRecorder(const MessageRecorder&) = delete;
    MessageRecorder& operator=(const MessageRecorder&) = delete;

    ~MessageRecorder() { MessageLog::Instance().SetCallback(nullptr); }

    static std::vector<std::string>& Messages()
    {
        static std::vector<std::string> messages;
        return messages;
    }

private:
    static LogResult Record(const std::string& text, Severity severity)
    {
        const char* mark = severity == Severity::Error ? "E " : severity == Severity::Warning ? "W " : "I ";
        Messages().push_back(mark + text);
        return {};
    }
};

} // namespace tq4x::test
