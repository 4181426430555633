#pragma once

#include <vector>

#include "report/check/TemplateFault.h"
#include "report/check/detail/Finding.h"

class CFile;

namespace tessalink::detail {

/// Says of each finding where it is, what stands there on the page, and what is known of its cause.
/// The file is the template, stored scrambled unless that is 0; it is read a few times, from its
/// start, when there are findings. CFileException passes through.
std::vector<TemplateFault> describeFindings(const std::vector<Finding>& findings, CFile& file,
                                            int scrambled);

}  // namespace tessalink::detail
