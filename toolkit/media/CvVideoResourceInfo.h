#pragma once
// CvVideoResourceInfo: the resources a video configuration starts its drivers with.

#include "toolkit/media/CvResourceTypeBase.h"

class CvVideoResourceInfo {
public:
    // The named configuration at the current project's frame rate.
    static CvVideoResources getResources(const LightweightString<char>& configuration);
};
