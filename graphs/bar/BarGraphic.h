#pragma once

#include "platform/base/Export.h"
#include "platform/graphics/CDC.h"

class BarScale;

/// A mark on a bar scale, which owns it.
class TESSALINK_API BarGraphic {
public:
    BarGraphic() = default;
    virtual ~BarGraphic();

    /// Draws the mark on the scale whose box has this place on the device; the factors turn design
    /// units into device units. Nothing is drawn without a scale.
    virtual void Draw(CDC* dc, double xScale, double yScale, const CRect& box) = 0;

    /// The scale that owns the mark; null before it has one.
    BarScale* GetContainer() const { return m_container; }
    /// Called by the scale that gets the mark.
    void SetContainer(BarScale* container) { m_container = container; }

protected:
    BarGraphic(const BarGraphic&) = default;
    BarGraphic& operator=(const BarGraphic&) = default;

private:
    BarScale* m_container = nullptr;
};
