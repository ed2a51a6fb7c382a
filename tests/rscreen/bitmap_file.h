#pragma once

#include <QByteArray>
#include <QImage>
#include <QString>

namespace quorvex {

/// A Windows bitmap file as other programs read it, byte by byte and without the toolkit's own reader.
struct BitmapFile {
    /// Reads uncompressed files of 24 or 32 bits a pixel, bottom row first.
    static BitmapFile read(const QString& path);

    QString problem;  ///< what is wrong with the file; empty for none
    QImage image;
};

}  // namespace quorvex
