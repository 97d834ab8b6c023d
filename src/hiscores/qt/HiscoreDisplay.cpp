#include "hiscores/qt/HiscoreDisplay.h"

#include "hiscores/HiscoreRows.h"
#include "hiscores/qt/frmHiscore.h"

#include <QFontMetrics>
#include <QGlyphRun>
#include <QLabel>
#include <QPainter>
#include <QPixmap>

namespace tolva {

namespace {
const QColor BarColour(23, 107, 105);
} // namespace

HiscoreDisplay::HiscoreDisplay(QLabel* hiScoreDisplay, std::function<QRect()> boardOnScreen)
    : target_(hiScoreDisplay), boardOnScreen_(std::move(boardOnScreen)), font_("Liberation Mono") {
    font_.setPixelSize(11);
    font_.setStyleHint(QFont::Monospace);
    // Plain pixels in the two text colours, as the original's small bitmap-like text.
    font_.setStyleStrategy(QFont::NoAntialias);
}

QColor HiscoreDisplay::FromBgr(std::int32_t colour) {
    return QColor(colour & 0xFF, (colour >> 8) & 0xFF, (colour >> 16) & 0xFF);
}

void HiscoreDisplay::DrawCells(QPainter& painter, int x, int y, const std::string& text) const {
    // One run of glyphs per text, each glyph at the left of its own cell. Laying the text
    // out a character at a time cost more than all the rest of the table.
    if (!glyphs_.isValid()) glyphs_ = QRawFont::fromFont(font_);
    const int baseline = y + 1 + QFontMetrics(font_).ascent();
    const QString chars = QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size()));
    const QList<quint32> indexes = glyphs_.glyphIndexesForString(chars);
    QList<quint32> shown;
    QList<QPointF> at;
    for (qsizetype i = 0; i < chars.size(); ++i) {
        if (chars[i] == u' ') continue;
        const QPointF cell(x + static_cast<int>(i) * CellWidth, baseline);
        if (i < indexes.size() && indexes[i] != 0) {
            shown.append(indexes[i]);
            at.append(cell);
        } else {
            // A character the font lacks is left to the text layout, which finds it elsewhere.
            painter.drawText(cell, QString(chars[i]));
        }
    }
    if (shown.isEmpty()) return;
    QGlyphRun run;
    run.setRawFont(glyphs_);
    run.setGlyphIndexes(shown);
    run.setPositions(at);
    painter.drawGlyphRun(QPointF(0, 0), run);
}

void HiscoreDisplay::Print(const Hiscores& table, std::int16_t highlightPlace, std::int32_t highlightColor,
                           std::int32_t highlightTextColor) {
    if (!target_) return;
    const int width = target_->width();
    picture_ = QImage(target_->size(), QImage::Format_RGB32);
    picture_.fill(Qt::black);
    QPainter painter(&picture_);
    painter.setFont(font_);
    const auto rows = HiscoreRows(table);
    for (int i = 0; i < Hiscores::Places; ++i) {
        QColor textColour = Qt::white;
        const int y = (CellHeight - 2) * i;
        const QRect bar(0, y + 1, width, CellHeight - 2);
        if (i % 2 == 0) painter.fillRect(bar, BarColour);
        if (highlightPlace > -1 && highlightPlace == i + 1) {
            painter.fillRect(bar, FromBgr(highlightColor));
            textColour = FromBgr(highlightTextColor);
        }
        painter.setPen(textColour);
        const HiscoreRow& row = rows[static_cast<std::size_t>(i)];
        DrawCells(painter, Columns[0], y, row.Place);
        DrawCells(painter, Columns[1], y, row.Name);
        DrawCells(painter, Columns[2], y, row.Level);
        DrawCells(painter, Columns[3], y, row.Score);
    }
    painter.end();
    target_->setPixmap(QPixmap::fromImage(picture_));
}

std::string HiscoreDisplay::AskInitials() {
    const QRect board = boardOnScreen_ ? boardOnScreen_() : QRect();
    return frmHiscore::Ask(board, target_ ? target_->window() : nullptr);
}

} // namespace tolva
