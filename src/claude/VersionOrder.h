#pragma once
// Ordering of version folder names (v20.11.1 after v20.9.0): runs of digits compare as numbers,
// everything else character by character, with no locale involved.

#include <QString>

namespace claude {

// Negative, zero or positive as a sorts before, with or after b.
int compareNumericAware(const QString& a, const QString& b);

}  // namespace claude
