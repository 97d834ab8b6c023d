#include "ContactSheet.h"

#include "PaintKit.h"

#include <QPainter>
#include <algorithm>

namespace {

constexpr int SheetWidth = 2200;
constexpr int Margin = 24;
constexpr int Gap = 18;
constexpr int LabelHeight = 18;
constexpr int HeadingHeight = 40;

struct Placed {
    int entry;
    QPoint at;
};

// Lays the entries out in rows, a new row and a heading for each section; returns the
// positions and the height the sheet needs.
int Layout(const std::vector<SheetEntry>& entries, std::vector<Placed>& placed,
           std::vector<std::pair<QString, int>>& headings)
{
    int x = Margin;
    int y = Margin;
    int rowHeight = 0;
    QString section;
    for (int i = 0; i < static_cast<int>(entries.size()); ++i) {
        const SheetEntry& e = entries[static_cast<size_t>(i)];
        const QSize size = e.image.size() * 2;
        if (i == 0 || e.section != section) {
            if (i != 0) {
                y += rowHeight + Gap;
            }
            section = e.section;
            headings.emplace_back(section, y);
            y += HeadingHeight;
            x = Margin;
            rowHeight = 0;
        }
        const int cellWidth = std::max(size.width(), 90);
        if (x + cellWidth > SheetWidth - Margin && x > Margin) {
            x = Margin;
            y += rowHeight + Gap;
            rowHeight = 0;
        }
        placed.push_back({i, QPoint(x, y)});
        x += cellWidth + Gap;
        rowHeight = std::max(rowHeight, size.height() + LabelHeight);
    }
    return y + rowHeight + Margin;
}

} // namespace

QImage ContactSheet::Compose(const std::vector<SheetEntry>& entries)
{
    std::vector<Placed> placed;
    std::vector<std::pair<QString, int>> headings;
    const int height = Layout(entries, placed, headings);
    QImage sheet(SheetWidth, height, QImage::Format_RGB32);
    sheet.fill(QColor(46, 50, 54));
    QPainter p(&sheet);
    for (const auto& [title, y] : headings) {
        p.fillRect(QRect(0, y, SheetWidth, HeadingHeight - 8), QColor(28, 31, 34));
        PaintKit::Caption(p, QRect(Margin, y, SheetWidth, HeadingHeight - 8), title,
                          PaintKit::Font(20, true), PaintKit::Gold(), Qt::AlignLeft | Qt::AlignVCenter);
    }
    p.setFont(PaintKit::Font(12, false, QStringLiteral("DejaVu Sans Mono")));
    for (const Placed& item : placed) {
        const SheetEntry& e = entries[static_cast<size_t>(item.entry)];
        const QImage big = e.image.scaled(e.image.size() * 2, Qt::IgnoreAspectRatio, Qt::FastTransformation);
        // A checker under pictures with alpha shows what is transparent.
        if (e.image.hasAlphaChannel()) {
            for (int cy = 0; cy < big.height(); cy += 8) {
                for (int cx = 0; cx < big.width(); cx += 8) {
                    const bool dark = ((cx + cy) / 8) % 2 == 0;
                    p.fillRect(QRect(item.at + QPoint(cx, cy), QSize(8, 8)),
                               dark ? QColor(90, 90, 90) : QColor(140, 140, 140));
                }
            }
        }
        p.drawImage(item.at, big);
        p.setPen(QColor(210, 214, 218));
        p.drawText(QRect(item.at.x(), item.at.y() + big.height() + 2, std::max(big.width(), 90) + Gap,
                         LabelHeight),
                   Qt::AlignLeft | Qt::AlignTop, e.label);
    }
    return sheet;
}
