#include "tests/platform/qt/StatePictures.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QDir>
#include <QPainter>
#include <QStyle>
#include <QWindow>
#include <algorithm>
#include <cstdlib>
#include <map>
#include <utility>

namespace tessalink::test {

namespace {

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

PixelPicture numbersOf(const QImage& image) {
    PixelPicture picture = {image.width(), image.height(), {}};
    for (int y = 0; y < image.height(); ++y) {
        const auto* const line = reinterpret_cast<const QRgb*>(image.constScanLine(y));
        picture.pixels.insert(picture.pixels.end(), line, line + image.width());
    }
    return picture;
}

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

QImage StateCard::Picture() const {
    std::vector<CardLayout::Cell> places;
    for (const Cell& cell : m_cells) {
        const QSize size = cell.picture.deviceIndependentSize().toSize();
        places.push_back({CSize(size.width(), size.height()), !cell.caption.isEmpty(), {}, {}});
    }
    const CardLayout layout(m_columns, std::move(places));
    const QSize size(layout.whole.cx, layout.whole.cy);
    const double scale = m_cells.front().picture.devicePixelRatio();
    QImage card((QSizeF(size) * scale).toSize(), QImage::Format_RGB32);
    card.setDevicePixelRatio(scale);
    card.fill(cPaper);
    QPainter painter(&card);
    QFont font("Liberation Sans");
    font.setPixelSize(11);
    font.setHintingPreference(QFont::PreferNoHinting);
    painter.setFont(font);
    for (std::size_t i = 0; i < m_cells.size(); ++i) {
        const auto& [unused, hasCaption, caption, picture] = layout.cells[i];
        if (hasCaption) painter.drawText(caption.x, caption.y + 11, m_cells[i].caption);
        painter.drawImage(picture.x, picture.y, m_cells[i].picture);
    }
    return card;
}

double worstDifference(const QImage& a, const QImage& b) {
    return worstDifference(numbersOf(a), numbersOf(b));
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
