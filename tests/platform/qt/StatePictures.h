#pragma once

#include <QImage>
#include <QPalette>
#include <QString>
#include <QWidget>
#include <vector>

#include "tests/support/StateCards.h"

// Pictures of windows, and their comparison with those that are stored in states/.
namespace tessalink::test {

/// Where the windows of a test get the looks that the stored pictures have: one style, one palette,
/// a caret that does not blink.
class FixedLooks {
public:
    explicit FixedLooks(bool isDark = false);
    ~FixedLooks();
    FixedLooks(const FixedLooks&) = delete;
    FixedLooks& operator=(const FixedLooks&) = delete;

private:
    QPalette m_palette;
    int m_flashTime;
};

/// What a widget shows in an area of it (by default all), and the hints over it, on a screen with
/// so many pixels per unit.
QImage pictureOf(QWidget& widget, double scale = 1, QRect area = {});

/// Pictures side by side in rows, each with what it shows above it.
class StateCard {
public:
    explicit StateCard(int columns) : m_columns(columns) {}

    void Add(const QString& caption, const QImage& picture);
    QImage Picture() const;

private:
    struct Cell {
        QString caption;
        QImage picture;
    };

    int m_columns;
    std::vector<Cell> m_cells;
};

double worstDifference(const QImage& a, const QImage& b);

/// Fails when a picture is not like states/NAME.png; the picture is in the build folder then. With
/// TESSALINK_REFRESH_PICTURES set it becomes the stored one instead.
void expectStored(const char* name, const QImage& picture);

}  // namespace tessalink::test
