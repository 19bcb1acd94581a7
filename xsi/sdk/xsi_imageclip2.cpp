#include <xsi_imageclip2.h>

#include "scene/Session.h"
#include "scene/Text.h"

namespace XSI
{

namespace
{

const Host::TimeControlObject* TimeOf(const CRef& ref)
{
    return Host::Objects().Find<Host::TimeControlObject>(ref);
}

} // namespace

TimeControl Clip::GetTimeControl() const
{
    const auto* clip = Host::Objects().Find<Host::ClipObject>(GetRef());
    return clip != nullptr ? CRef::FromObjectID(clip->TimeControl) : CRef();
}

CString ImageClip2::GetFileName() const
{
    const auto* clip = Host::Objects().Find<Host::ClipObject>(GetRef());
    return clip != nullptr ? Host::FromUtf8(clip->FileName) : CString();
}

Image ImageClip2::GetImage(double time) const
{
    const auto* clip = Host::Objects().Find<Host::ClipObject>(GetRef());
    return clip != nullptr && clip->Pixels ? Image(clip->Pixels(Host::FrameOf(time))) : Image();
}

double TimeControl::GetClipIn() const
{
    const Host::TimeControlObject* time = TimeOf(GetRef());
    return time != nullptr ? time->ClipIn : 0.0;
}

double TimeControl::GetClipOut() const
{
    const Host::TimeControlObject* time = TimeOf(GetRef());
    return time != nullptr ? time->ClipOut : 0.0;
}

double TimeControl::GetScale() const
{
    const Host::TimeControlObject* time = TimeOf(GetRef());
    return time != nullptr ? time->Scale : 0.0;
}

double TimeControl::GetStartOffset() const
{
    const Host::TimeControlObject* time = TimeOf(GetRef());
    return time != nullptr ? time->StartOffset : 0.0;
}

LONG Image::GetResX() const
{
    return m_data != nullptr ? m_data->Width : 0;
}

LONG Image::GetResY() const
{
    return m_data != nullptr ? m_data->Height : 0;
}

LONG Image::GetNumChannels() const
{
    return m_data != nullptr ? m_data->Channels : 0;
}

LONG Image::GetChannelSize() const
{
    return m_data != nullptr ? m_data->ChannelSize : 0;
}

const void* Image::GetPixelArray() const
{
    return m_data != nullptr && !m_data->Pixels.empty() ? m_data->Pixels.data() : nullptr;
}

} // namespace XSI
