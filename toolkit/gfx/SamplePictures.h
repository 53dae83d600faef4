#pragma once
// Pictures drawn in code, for demonstration pages, fixtures and benchmarks that need photo-like files without
// shipping any: a sky, a sun and rolling hills, varied by a seed, with a little grain so that encoders work
// as hard as on a real photograph.

#include "toolkit/gfx/Image.h"

namespace Pictor {

// Opaque; null when the size is out of range.
Image makeSamplePicture(int width, int height, unsigned seed);

} // namespace Pictor
