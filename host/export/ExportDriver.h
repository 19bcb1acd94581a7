#pragma once

#include <xsi_status.h>

namespace tq4x
{

/// Resolves the frame window of the live options from the project's play control into the process-wide
/// values.
void ResolveExportFrames();

/// Runs one export with the live options: validate, confirm, collect, convert, write, hand off, save. The
/// first phase that fails ends it, and so does a "no" to overwriting, which is a success.
///
/// An export that ends early restores nothing: the options stay live, the last-export file stays as it was
/// and the host's automatic inspection stays off. A whole one puts all three in order.
XSI::CStatus RunExport();

} // namespace tq4x
