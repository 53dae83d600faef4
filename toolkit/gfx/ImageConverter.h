#pragma once
// ImageConverter: changing the size of pictures.
//
// resize fills the destination from the whole source. Shrinking averages every source pixel under each
// destination pixel, weighted by how much of it lies there (area averaging), so fine detail turns into its
// average colour instead of aliasing into moire and jagged edges. Growing takes the nearest source pixel.
// Pixels are premultiplied, so averaging needs no special care for transparency.

#include "toolkit/gfx/Surface.h"

namespace ImageConverter {

// Answers false (and leaves the destination alone) when either surface is empty.
bool resize(const Cv::Image::Surface& source, Cv::Image::Surface& destination);
bool resize(const Pictor::Image& source, Pictor::Image& destination);

} // namespace ImageConverter
