// The three ways to publish. Each creates its components, has them publish the open project into
// destination (a folder that they create) and releases them; failures are raised with their message
// text.
#pragma once

#include <string>

namespace zt {

class CZTInvisible;

// Catalogues and illustrations, by the exporter.
void PublishThroughExporter(CZTInvisible& app, const std::wstring& destination);

// Texts, by the 3D component alone.
void PublishThroughText(CZTInvisible& app, const std::wstring& projectName,
                        const std::wstring& destination);

// Everything else, by the 3D component with a hosted viewer.
void PublishThroughViewer(CZTInvisible& app, const std::wstring& projectName,
                          const std::wstring& destination);

} // namespace zt
