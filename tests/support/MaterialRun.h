#pragma once

#include "collect/CollectorFactory.h"
#include "collect/ExportMaterial.h"
#include "collect/ExportTexture.h"
#include "export/ConvertCollectors.h"
#include "export/ExportContext.h"
#include "material/Material.h"
#include "pipeline/ExportOptions.h"
#include "pipeline/ExportValues.h"
#include "support/MessageRecorder.h"
#include "support/SceneBuilder.h"

#include <memory>
#include <string>
#include <vector>

namespace tq4x::test
{

/// Collects and converts materials as an export does, without a command and without files.
///
///     SceneBuilder scene;
///     SceneMaterial red = scene.Material("red", "lambert").Color("diffuse", 1, 0, 0);
///     MaterialRun run;
///     EXPECT_TRUE(run.Convert({red}));
///     EXPECT_EQ(run.Of(red).Diffuse, ...);
class MaterialRun
{
public:
    /// Frames as the host counts them.
    explicit MaterialRun(double first = 0.0, double last = 0.0, float step = 1.0f)
        : Options(*CreateOptions()),
          m_former(GlobalExportValues())
    {
        GlobalExportValues().ExportStartFrame = first;
        GlobalExportValues().ExportEndFrame = last;
        GlobalExportValues().FramePrecision = step;
        Context = std::make_unique<ExportContext>();
    }

    MaterialRun(const MaterialRun&) = delete;
    MaterialRun& operator=(const MaterialRun&) = delete;

    ~MaterialRun()
    {
        Context.reset();
        GlobalExportValues() = m_former;
        DestroyOptions();
    }

    /// Collects objects in their order: meshes with the materials that they use, or materials alone. The
    /// answer is that of the conversion.
    bool Convert(const std::vector<XSI::CRef>& objects)
    {
        for (const XSI::CRef& object : objects) {
            if (object.IsA(XSI::siMaterialID))
                FindOrCreateMaterial(*Context, object);
            else
                VisitObject(*Context, object, false, {});
        }
        return ConvertCollectors(*Context);
    }

    ExportMaterial& Collector(const XSI::CRef& material) { return FindOrCreateMaterial(*Context, material); }

    const Material& Of(const XSI::CRef& material) { return *Collector(material).Target; }

    /// The stages of a material as the names of their textures.
    std::vector<std::string> StageNames(const XSI::CRef& material)
    {
        std::vector<std::string> names;
        for (const TextureStage& stage : Collector(material).Stages)
            names.push_back(stage.Name.GetAsciiString());
        return names;
    }

    /// The textures that would be written, by name.
    std::vector<std::string> TextureNames() const
    {
        std::vector<std::string> names;
        for (const auto& [path, entry] : Context->Content.Materials.Textures.Entries)
            names.push_back(entry.Name);
        return names;
    }

    static const std::vector<std::string>& Messages() { return MessageRecorder::Messages(); }

    ExportOptions& Options; ///< to be changed before `Convert`
    std::unique_ptr<ExportContext> Context;

private:
    ExportValues m_former;
    MessageRecorder m_recorder;
};

} // namespace tq4x::test
