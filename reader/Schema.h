#pragma once

#include <string_view>

#include "Finding.h"
#include "ReadDocument.h"
#include "XmlTree.h"

namespace tq4x::reader
{

/// So many elements and attributes the grammar looks at: it needs ten times the memory of a `XmlTree`.
/// Without keys and streams no scene comes near.
inline constexpr std::size_t MostGrammarItems = 2'000'000;

/// Holds a document against the grammar of its kind: the order of elements, attributes, words, the form of
/// numbers. What is broken is told by findings of code "TQ-SCHEMA".
///
/// Of long streams, images and key lists the grammar sees the beginning only. Their readers hold every
/// number, character and key against the same form, and are several times as fast.
void CheckSchema(FileKind kind, const XmlTree& tree, FindingList& findings,
                 std::size_t mostItems = MostGrammarItems);

} // namespace tq4x::reader
