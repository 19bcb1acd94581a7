#include <xsi_uitoolkit.h>

#include <algorithm>

#include "scene/Session.h"
#include "scene/Text.h"

namespace XSI
{

namespace
{

/// What a user who does nothing harmful would answer.
LONG CarefulAnswer(LONG buttons)
{
    switch (buttons & 0xf) {
    case siMsgYesNo:
        return siMsgNo;
    case siMsgOkCancel:
    case siMsgYesNoCancel:
        return siMsgCancel;
    default:
        return siMsgOk;
    }
}

LONG AnswerBox(Host::Session& session, const Host::MessageBox& box)
{
    if (!session.MessageBoxAnswers.empty()) {
        const LONG answer = session.MessageBoxAnswers.front();
        session.MessageBoxAnswers.pop_front();
        return answer;
    }
    return session.Fill.AnswerMessageBox ? session.Fill.AnswerMessageBox(box) : CarefulAnswer(box.Buttons);
}

Host::ProgressState* StateOf(const CRef& ref)
{
    auto* bar = Host::Objects().Find<Host::ProgressObject>(ref);
    return bar != nullptr ? &bar->State : nullptr;
}

Host::ProgressState ReadState(const CRef& ref)
{
    const Host::ProgressState* state = StateOf(ref);
    return state != nullptr ? *state : Host::ProgressState();
}

/// Changes the bar and lets the program see it.
template<class Change>
CStatus ChangeState(const CRef& ref, const Change& change)
{
    Host::ProgressState* state = StateOf(ref);
    if (state == nullptr) {
        return CStatus::Fail;
    }
    change(*state);
    state->Value = std::clamp(state->Value, state->Minimum, std::max(state->Minimum, state->Maximum));
    const auto& watch = Host::Session::Current().Fill.Progress;
    if (watch && watch(*state) && state->IsCancelEnabled) {
        state->IsCancelPressed = true;
    }
    return CStatus::OK;
}

/// The sum, held within 32 bits.
LONG AddWithin(LONG a, LONG b)
{
    const long long sum = static_cast<long long>(a) + b;
    return static_cast<LONG>(std::clamp<long long>(sum, -2147483648LL, 2147483647LL));
}

} // namespace

CStatus UIToolkit::MsgBox(const CString& text, LONG buttons, const CString& title, LONG& answer) const
{
    if (!IsValid()) {
        return CStatus::Fail;
    }
    Host::Session& session = Host::Session::Current();
    Host::MessageBox box{Host::ToUtf8(text), Host::ToUtf8(title), buttons, siMsgOk};
    box.Answer = AnswerBox(session, box);
    answer = box.Answer;
    session.MessageBoxes.push_back(box);
    return CStatus::OK;
}

ProgressBar UIToolkit::GetProgressBar() const
{
    if (!IsValid()) {
        return ProgressBar();
    }
    const CRef bar = CRef::FromObjectID(Host::Session::Current().ProgressBar);
    *StateOf(bar) = Host::ProgressState();
    return bar;
}

CStatus ProgressBar::PutCaption(const CString& caption)
{
    return ChangeState(GetRef(), [&](Host::ProgressState& state) { state.Caption = Host::ToUtf8(caption); });
}

CStatus ProgressBar::PutStatusText(const CString& text)
{
    return ChangeState(GetRef(), [&](Host::ProgressState& state) { state.StatusText = Host::ToUtf8(text); });
}

CStatus ProgressBar::PutVisible(bool isVisible)
{
    return ChangeState(GetRef(), [=](Host::ProgressState& state) { state.IsVisible = isVisible; });
}

CStatus ProgressBar::PutCancelEnabled(bool isEnabled)
{
    return ChangeState(GetRef(), [=](Host::ProgressState& state) { state.IsCancelEnabled = isEnabled; });
}

CStatus ProgressBar::PutMinimum(LONG minimum)
{
    return ChangeState(GetRef(), [=](Host::ProgressState& state) { state.Minimum = minimum; });
}

CStatus ProgressBar::PutMaximum(LONG maximum)
{
    return ChangeState(GetRef(), [=](Host::ProgressState& state) { state.Maximum = maximum; });
}

CStatus ProgressBar::PutStep(LONG step)
{
    return ChangeState(GetRef(), [=](Host::ProgressState& state) { state.Step = step; });
}

CStatus ProgressBar::PutValue(LONG value)
{
    return ChangeState(GetRef(), [=](Host::ProgressState& state) { state.Value = value; });
}

CString ProgressBar::GetCaption() const
{
    return Host::FromUtf8(ReadState(GetRef()).Caption);
}

CString ProgressBar::GetStatusText() const
{
    return Host::FromUtf8(ReadState(GetRef()).StatusText);
}

bool ProgressBar::GetVisible() const
{
    return ReadState(GetRef()).IsVisible;
}

LONG ProgressBar::GetMinimum() const
{
    return ReadState(GetRef()).Minimum;
}

LONG ProgressBar::GetMaximum() const
{
    return ReadState(GetRef()).Maximum;
}

LONG ProgressBar::GetStep() const
{
    return ReadState(GetRef()).Step;
}

LONG ProgressBar::GetValue() const
{
    return ReadState(GetRef()).Value;
}

bool ProgressBar::IsCancelEnabled() const
{
    return ReadState(GetRef()).IsCancelEnabled;
}

bool ProgressBar::IsCancelPressed() const
{
    return ReadState(GetRef()).IsCancelPressed;
}

LONG ProgressBar::Increment()
{
    ChangeState(GetRef(),
                [](Host::ProgressState& state) { state.Value = AddWithin(state.Value, state.Step); });
    return GetValue();
}

} // namespace XSI
