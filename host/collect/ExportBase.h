#pragma once

#include "collect/CollectorKey.h"

#include <xsi_ref.h>

#include <cstdint>
#include <string>

namespace tq4x
{

struct ExportContext;
class ExportX3DObject;

/// Kinds of collectors.
enum class CollectorKind : std::int32_t
{
    Material = 0,
    Texture = 1,
    X3DObject = 2, ///< a base of nodes, meshes, cameras and lights; no collector is of this kind alone
    Mesh = 3,
    Node = 4,
    AmbientLight = 5,
    Light = 6,
    Camera = 7,
};

/// Wraps one host object for the time of an export and turns it into records of the core. Collectors are
/// owned by the export context and end with it; the records outlive them.
class ExportBase
{
public:
    ExportBase(ExportContext& context, const XSI::CRef& object);
    ExportBase(const ExportBase&) = delete;
    ExportBase& operator=(const ExportBase&) = delete;
    virtual ~ExportBase();

    virtual CollectorKind GetKind() const = 0;

    /// True for the own kind and for the kinds that it derives from.
    virtual bool IsKindOf(CollectorKind kind) const = 0;

    /// Finds the collector of the parent object. Runs once, after the collectors of all parents exist.
    virtual void Link() {}

    /// Collects: reads the host, samples what moves, fills the records. False fails the export; what merely
    /// gives an object up answers true.
    [[nodiscard]] virtual bool Export() = 0;

    ExportContext& Context;
    XSI::CRef Object;                  ///< the wrapped host object
    ExportX3DObject* Parent = nullptr; ///< collector of the parent object, if it is exported
    bool ConvertToModel = false;       ///< the object is exported relative to a chosen model root
    InstancePath Instances;            ///< through which it was reached; the last one owns it

    /// The walk's flag for an object below an instance. The end of every object clears it, so that it holds
    /// down to the first leaf only; `Instances` tells the whole truth.
    bool InsideInstance = false;

protected:
    /// False, with a message, for an object that the host no longer knows.
    [[nodiscard]] bool CheckObject() const;

    /// The host's name of the object in the system's code page, or a text that says that it is invalid.
    std::string ObjectName() const;
};

} // namespace tq4x
