// A part file of a CNC run, read to be looked at.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "cnc/picture/part_picture.h"
#include "shell/exit_status.h"

namespace brenvik {
class HostApplication;
}

namespace brenvik::app {

/// How a picture of a part file is called: the file's name without its ending.
std::string PictureTitleOf(const std::string& file);

/// Reads a part file by its place on this machine; the drawing is closed again. `remarks` get what could not
/// be found out about its tools. Throws CommandError where the file can't be read, and where it isn't a part
/// file.
PartPicture ReadPartFile(HostApplication& host, const std::string& file, std::vector<std::string>& remarks);

struct PictureOptions {
    std::string file, out;
    bool quiet = false;
};

/// The content of the picture's file.
using PictureMaker = std::function<std::string(const PartPicture& picture, const std::string& title)>;

/// Reads the part file in this home and writes its picture, whole; what isn't understood is reported.
ExitStatus DrawPicture(const std::string& home, const PictureOptions& options, const PictureMaker& make);

}  // namespace brenvik::app
