#pragma once

#include <QFont>

namespace bm::textviewer {

// A font whose characters all have one width, so the columns of a report
// line up. The desktop's fixed font comes first; where it resolves to a
// proportional face (a machine whose "monospace" alias points elsewhere, or
// a minimal font set), the first installed fixed-pitch family takes its
// place. Only where no such family exists is the desktop's font kept.
QFont fixedPitchFont();

// Whether any installed family draws every character with one width.
bool anyFixedPitchFamilyInstalled();

}  // namespace bm::textviewer
