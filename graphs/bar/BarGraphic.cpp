#include "graphs/bar/BarGraphic.h"

BarGraphic::~BarGraphic() = default;
