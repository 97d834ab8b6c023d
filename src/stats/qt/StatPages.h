#pragma once
// StatPages: a printed document in millimetres on any paged device, the system's printer
// or a PDF file alike, so that what a test reads back from a PDF is what the printer gets.
// The origin is the top left of the printable area and the size is that area.
#include "stats/qt/StatCanvas.h"

#include <QPainter>

#include <memory>

class QPagedPaintDevice;

namespace tolva {

class StatPages {
public:
    // Starts the document. If the device cannot be painted on (no printer, a file that
    // cannot be written) the document is not Active and nothing will be printed.
    explicit StatPages(QPagedPaintDevice& device);
    ~StatPages();
    StatPages(const StatPages&) = delete;
    StatPages& operator=(const StatPages&) = delete;

    bool Active() const { return painter_.isActive(); }
    // The page being drawn; only valid while Active.
    StatCanvas& Canvas() { return *canvas_; }

    // Ends the page and starts the next; the pen goes to the top left.
    void NewPage();
    // Ends the document and hands it on to the printer or the file. Gives false if the
    // device reported a failure.
    bool EndDoc();

private:
    QPagedPaintDevice& device_;
    QPainter painter_;
    std::unique_ptr<StatCanvas> canvas_;
};

} // namespace tolva
