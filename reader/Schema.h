#pragma once

#include <string_view>

#include "Finding.h"
#include "ReadDocument.h"
#include "XmlTree.h"

namespace tq4x::reader
{

/// Holds a document against the grammar of its kind: the order of elements, attributes, words, the form of
/// numbers. What is broken is told by findings of code "TQ-SCHEMA".
///
/// Of long streams, images and key lists the grammar sees the beginning only. Their readers hold every
/// number, character and key against the same form, and are several times as fast.
void CheckSchema(FileKind kind, const XmlTree& tree, FindingList& findings);

} // namespace tq4x::reader
