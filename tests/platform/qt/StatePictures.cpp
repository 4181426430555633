#include "tests/platform/qt/StatePictures.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QDir>
#include <QPainter>
#include <QStyle>
#include <QWindow>
#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <map>

namespace tessalink::test {

namespace {

constexpr int cBlock = 8;
constexpr int cMargin = 6;
constexpr int cCaptionHeight = 16;
constexpr QRgb cPaper = qRgb(214, 224, 236);  // no control has it
constexpr int cShades = 6;                    // nearer ones are stored as one
constexpr const char* cRefresh = "TESSALINK_REFRESH_PICTURES";

QPalette darkPalette() {
    QPalette palette(QColor(53, 53, 53));
    const auto both = [&](QPalette::ColorRole role, const QColor& color) {
        palette.setColor(QPalette::Active, role, color);
        palette.setColor(QPalette::Inactive, role, color);
    };
    both(QPalette::Base, QColor(35, 35, 35));
    both(QPalette::Text, Qt::white);
    both(QPalette::WindowText, Qt::white);
    both(QPalette::Highlight, QColor(42, 130, 218));
    both(QPalette::HighlightedText, Qt::black);
    for (const auto role : {QPalette::Text, QPalette::WindowText, QPalette::ButtonText}) {
        palette.setColor(QPalette::Disabled, role, QColor(127, 127, 127));
    }
    return palette;
}

// The differences of one channel, summed up over the pixels around each.
class Differences {
public:
    Differences(const QImage& a, const QImage& b, int shift) : m_a(a), m_b(b), m_shift(shift) {}

    int Around(int x, int y) const {
        int sum = 0;
        for (int row = std::max(y - 1, 0); row <= std::min(y + 1, m_a.height() - 1); ++row) {
            const auto* const one = reinterpret_cast<const QRgb*>(m_a.constScanLine(row));
            const auto* const other = reinterpret_cast<const QRgb*>(m_b.constScanLine(row));
            for (int i = std::max(x - 1, 0); i <= std::min(x + 1, m_a.width() - 1); ++i) {
                sum += channel(one[i]) - channel(other[i]);
            }
        }
        return sum;
    }
    double OfBlock(int left, int top) const {
        constexpr double cPixels = 9.0 * cBlock * cBlock;
        int sum = 0;
        for (int y = top; y < std::min(top + cBlock, m_a.height()); ++y) {
            for (int x = left; x < std::min(left + cBlock, m_a.width()); ++x) {
                sum += std::abs(Around(x, y));
            }
        }
        return sum / cPixels;
    }

private:
    int channel(QRgb pixel) const { return static_cast<int>(pixel >> m_shift & 0xFF); }

    const QImage& m_a;
    const QImage& m_b;
    int m_shift;
};

int distance(QRgb a, QRgb b) {
    return std::max({std::abs(qRed(a) - qRed(b)), std::abs(qGreen(a) - qGreen(b)),
                     std::abs(qBlue(a) - qBlue(b))});
}

// So many colours that every other one is at most as far from one of them as told; the most
// frequent come first.
QList<QRgb> paletteOf(const std::vector<std::pair<int, QRgb>>& frequent, int farthest) {
    QList<QRgb> palette;
    for (const auto& [count, color] : frequent) {
        const auto isNear = [&, other = color](QRgb known) {
            return distance(known, other) <= farthest;
        };
        if (std::none_of(palette.begin(), palette.end(), isNear)) palette.append(color);
    }
    return palette;
}

// As numbers of colours, a third of the size; where text is smoothed, shades become alike.
QImage small(const QImage& picture) {
    constexpr qsizetype cMost = 256;
    std::map<QRgb, int> counts;
    for (int y = 0; y < picture.height(); ++y) {
        const auto* const line = reinterpret_cast<const QRgb*>(picture.constScanLine(y));
        for (int x = 0; x < picture.width(); ++x) --counts[line[x]];
    }
    std::vector<std::pair<int, QRgb>> frequent;
    frequent.reserve(counts.size());
    for (const auto& [color, count] : counts) frequent.emplace_back(count, color);
    std::sort(frequent.begin(), frequent.end());
    int farthest = cShades;
    QList<QRgb> palette = paletteOf(frequent, farthest);
    while (palette.size() > cMost) palette = paletteOf(frequent, ++farthest);
    return picture.convertToFormat(QImage::Format_Indexed8, palette, Qt::ThresholdDither);
}

}  // namespace

FixedLooks::FixedLooks(bool isDark)
    : m_palette(QApplication::palette()), m_flashTime(QApplication::cursorFlashTime()) {
    QApplication::setStyle("Fusion");
    QApplication::setCursorFlashTime(0);
    QApplication::setPalette(isDark ? darkPalette() : QPalette(QColor(239, 239, 239)));
}

FixedLooks::~FixedLooks() {
    QApplication::setPalette(m_palette);
    QApplication::setCursorFlashTime(m_flashTime);
}

QImage pictureOf(QWidget& widget, double scale, QRect area) {
    if (area.isNull()) area = widget.rect();
    const QPoint origin = widget.mapToGlobal(QPoint());
    QWidgetList tips;
    for (QWidget* const top : QApplication::topLevelWidgets()) {
        if (!top->isVisible() || top->windowType() != Qt::ToolTip) continue;
        tips.push_back(top);
        area |= top->geometry().translated(-origin);
    }
    QImage picture((QSizeF(area.size()) * scale).toSize(), QImage::Format_RGB32);
    picture.setDevicePixelRatio(scale);
    picture.fill(QApplication::palette().color(QPalette::Window));
    const QRect own = area & widget.rect();
    widget.render(&picture, own.topLeft() - area.topLeft(), own);
    for (QWidget* const tip : tips) tip->render(&picture, tip->pos() - origin - area.topLeft());
    return picture;
}

void StateCard::Add(const QString& caption, const QImage& picture) {
    m_cells.push_back({caption, picture});
}

std::vector<int> StateCard::column_widths() const {
    std::vector<int> widths(static_cast<std::size_t>(m_columns));
    for (std::size_t i = 0; i < m_cells.size(); ++i) {
        int& width = widths[i % widths.size()];
        width = std::max(width, m_cells[i].Size().width());
    }
    return widths;
}

int StateCard::row_height(std::size_t first) const {
    int height = 0;
    const std::size_t end = std::min(first + static_cast<std::size_t>(m_columns), m_cells.size());
    for (std::size_t i = first; i < end; ++i) {
        const int caption = m_cells[i].caption.isEmpty() ? 0 : cCaptionHeight;
        height = std::max(height, m_cells[i].Size().height() + caption + cMargin);
    }
    return height;
}

QImage StateCard::Picture() const {
    const auto columns = static_cast<std::size_t>(m_columns);
    const std::vector<int> widths = column_widths();
    QSize size(cMargin, cMargin);
    for (const int width : widths) size.rwidth() += width + cMargin;
    for (std::size_t i = 0; i < m_cells.size(); i += columns) size.rheight() += row_height(i);
    const double scale = m_cells.front().picture.devicePixelRatio();
    QImage card((QSizeF(size) * scale).toSize(), QImage::Format_RGB32);
    card.setDevicePixelRatio(scale);
    card.fill(cPaper);
    QPainter painter(&card);
    QFont font("Liberation Sans");
    font.setPixelSize(11);
    font.setHintingPreference(QFont::PreferNoHinting);
    painter.setFont(font);
    QPoint place(cMargin, cMargin);
    for (std::size_t i = 0; i < m_cells.size(); ++i) {
        const Cell& cell = m_cells[i];
        QPoint corner = place;
        if (!cell.caption.isEmpty()) {
            painter.drawText(place + QPoint(0, 11), cell.caption);
            corner.ry() += cCaptionHeight;
        }
        painter.drawImage(corner, cell.picture);
        place.rx() += widths[i % columns] + cMargin;
        if (i % columns + 1 == columns) {
            place = QPoint(cMargin, place.y() + row_height(i + 1 - columns));
        }
    }
    return card;
}

double worstDifference(const QImage& a, const QImage& b) {
    double worst = 0;
    for (const int shift : {0, 8, 16}) {
        const Differences differences(a, b, shift);
        for (int y = 0; y < a.height(); y += cBlock) {
            for (int x = 0; x < a.width(); x += cBlock) {
                worst = std::max(worst, differences.OfBlock(x, y));
            }
        }
    }
    return worst;
}

void expectStored(const char* name, const QImage& picture) {
    const QString file = QString("%1.png").arg(name);
    const QString stored = QString(TESSALINK_SOURCE_DIR "/tests/platform/qt/states/") + file;
    QImage plain = picture;
    plain.setDevicePixelRatio(1);
    if (qEnvironmentVariableIsSet(cRefresh)) {
        ASSERT_TRUE(small(plain).save(stored, "PNG", 0)) << stored.toStdString();
        return;
    }
    const QImage reference = QImage(stored).convertToFormat(QImage::Format_RGB32);
    const QDir built(QCoreApplication::applicationDirPath());
    const QString kept = built.filePath("states/" + file);
    const bool isAlike =
        reference.size() == plain.size() && worstDifference(reference, plain) <= cPictureTolerance;
    if (isAlike) return;
    built.mkpath("states");
    plain.save(kept);
    ADD_FAILURE() << "not like " << stored.toStdString() << ": see " << kept.toStdString()
                  << (reference.size() == plain.size()
                          ? "; differs by " + std::to_string(worstDifference(reference, plain))
                          : std::string("; another size"))
                  << ". If that is meant, run with " << cRefresh << "=1.";
}

}  // namespace tessalink::test
