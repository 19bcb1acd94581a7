#include "collect/ExportAmbientLight.h"

#include "collect/FiniteValues.h"
#include "collect/SampleFrames.h"
#include "environment/Light.h"
#include "export/Each.h"
#include "export/ExportContext.h"
#include "pipeline/ExportValues.h"
#include "pipeline/MessageLog.h"

#include <xsi_parameter.h>
#include <xsi_property.h>
#include <xsi_x3dobject.h>

namespace tq4x
{
namespace
{

/// The first `ambience` among the properties of the scene root.
XSI::Parameter FindAmbience(const XSI::CRef& root)
{
    for (const XSI::CRef& reference : Each(XSI::X3DObject(root).GetProperties())) {
        const XSI::Parameter ambience = XSI::Property(reference).GetParameter("ambience");
        if (ambience.IsValid())
            return ambience;
    }
    return {};
}

Color ReadAmbience(const XSI::Parameter& ambience, double frame)
{
    const auto component = [&](const char* name) {
        return static_cast<float>(ambience.GetParameter(name).GetValue(frame));
    };
    return {component("red"), component("green"), component("blue"), 1.0f};
}

} // namespace

bool ExportAmbientLight::Export()
{
    Light& light = Context.Lights.Add();
    light.LightKind = LightKind::Ambient;
    light.Name = Context.NodeNames.GetUniqueName("AmbientLight");
    const XSI::Parameter ambience = FindAmbience(Object);
    if (!ambience.IsValid())
        return true;
    const ExportValues& values = GlobalExportValues();
    SampleFrames(values, [&](double frame) {
        const Color color = ReadAmbience(ambience, frame);
        light.Curves[LightCurve::Ambient].Samples.push_back(color.R);
        light.Curves[LightCurve::Ambient + 1].Samples.push_back(color.G);
        light.Curves[LightCurve::Ambient + 2].Samples.push_back(color.B);
        light.Curves[LightCurve::Ambient + 3].Samples.push_back(color.A);
    });
    light.Ambient = ReadAmbience(ambience, values.ExportStartFrame);
    if (!AreFinite(light))
        PrintMessage("Values that are not finite exist(" + light.Name + ").", Severity::Warning);
    return true;
}

} // namespace tq4x
