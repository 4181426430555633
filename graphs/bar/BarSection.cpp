#include "graphs/bar/BarSection.h"

BarSection::~BarSection() = default;
