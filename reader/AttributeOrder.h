#pragma once

#include "Finding.h"
#include "ReadDocument.h"
#include "XmlTree.h"

namespace tq4x::reader
{

/// Holds the attributes of all elements against the order in which the grammar of the kind lists them. For a
/// validator attributes have none, but the files are read as text too. What stands in another order is told
/// with the code "TQ-ATTRIBUTE-ORDER"; attributes that the grammar does not know are passed over.
void CheckAttributeOrder(FileKind kind, const XmlTree& tree, FindingList& findings);

} // namespace tq4x::reader
