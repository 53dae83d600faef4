#include "toolkit/media/CvVideoResourceInfo.h"

#include "toolkit/media/CurrentProject.h"

CvVideoResources CvVideoResourceInfo::getResources(const LightweightString<char>& configuration)
{
    CvVideoResources resources;
    resources.configuration = fromUTF8(configuration.view());
    resources.frameRate = Cv::CurrentProject::getFrameRate(0);
    return resources;
}
