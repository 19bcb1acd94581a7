#pragma once

#include <xsi_parameter.h>
#include <xsi_ref.h>
#include <xsi_string.h>

namespace tq4x
{

/// Projection of one coordinate set of a mesh: the host's parameters, kept so that they can be read at any
/// frame. Parameters of a set without a projection are invalid.
struct UvRecord
{
    XSI::CString Name; ///< name of the coordinate set
    XSI::Parameter ScaleU, ScaleV, ScaleW;
    XSI::Parameter RotateU, RotateV, RotateW; ///< degrees
    XSI::Parameter TranslateU, TranslateV, TranslateW;
    bool WrapU = false;
    bool WrapV = false;
};

/// Reads the projection of a coordinate set from the first nested primitive that has one.
UvRecord ReadUvRecord(const XSI::CRef& property);

} // namespace tq4x
