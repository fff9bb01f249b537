#pragma once

namespace zt {

class CZTInvisible;

// Generates the project's document when it has none and updates it through the authoring system's
// hidden editor control. Returns whether the project changed; raises a message text on failure.
bool UpdateProjectDocument(CZTInvisible& app);

} // namespace zt
