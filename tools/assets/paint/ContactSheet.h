#pragma once
// One PNG with every picture the generator made, at twice its size and labelled with its
// file name, grouped by section: the page a reviewer looks at instead of 150 files.
#include "AssetSink.h"

#include <QImage>
#include <vector>

class ContactSheet {
public:
    static QImage Compose(const std::vector<SheetEntry>& entries);
};
