#pragma once

#include <string>
#include <vector>

namespace gallery {

// Which texts overlap one another or leave the sheet in random graphs of graph files: of every
// type, with contents as questionnaires have them and the layout that is usual.
std::vector<std::string> describedTextFaults();

}  // namespace gallery
