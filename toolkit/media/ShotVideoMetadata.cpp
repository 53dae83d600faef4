#include "toolkit/media/ShotVideoMetadata.h"

#include "toolkit/media/DigitalVideoFormats.h"

uint32_t ShotVideoMetadata::getWidth() const { return Cv::DigitalVideoFormats::findByUID(m_uid).getDisplayWidth(); }

uint32_t ShotVideoMetadata::getHeight() const { return Cv::DigitalVideoFormats::findByUID(m_uid).getDisplayHeight(); }
