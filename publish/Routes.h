// The three ways to publish. Each creates its components, has them publish the project into
// destination (a folder that they create) and releases them; failures are raised with their message
// text.
#pragma once

#include <string>

namespace zt {

struct Publication;

// Catalogues and illustrations, by the exporter.
void PublishThroughExporter(const Publication& publication, const std::wstring& destination);

// Texts, by the 3D component alone.
void PublishThroughText(const Publication& publication, const std::wstring& destination);

// Everything else, by the 3D component with a hosted viewer.
void PublishThroughViewer(const Publication& publication, const std::wstring& destination);

} // namespace zt
