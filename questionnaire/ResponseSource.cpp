#include "questionnaire/ResponseSource.h"

namespace tessalink {

ResponseSource::~ResponseSource() = default;

}  // namespace tessalink
