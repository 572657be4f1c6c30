// Pixels of an image as an 8-bit picture, and pictures as PNG files. Used by the commands that write
// pictures.
#pragma once

#include <QImage>
#include <string>
#include <vector>

#include "hostsdk/CTzUser_Image.h"

namespace tzhost {

// The part of that size from the top left pixel on, 8 bits a channel, straight alpha.
QImage readPicture(const CTzUser_Image& image, TzSize part);

// A whole level, through the level-sample interface.
QImage readLevel(ITzImageLevelSample& samples, uint32_t level, TzSize size);

// A picture as the bytes of a file of that format, one of pictureFormats(); throws CTzError. Where a format
// has no transparency the picture stands on white.
std::string pictureBytes(const QImage& picture, const std::string& format);

// The formats that Qt writes with its plug-ins of this machine, by the endings of file names, "png" first.
std::vector<std::string> pictureFormats();

}  // namespace tzhost
