#pragma once

#include <QMainWindow>
#include <QString>

namespace quorvex::tour {

/// A picture of what is in front: the menu or drop-down list with the window it belongs to, else the modal
/// dialog, else the main window. Without frames, so it looks the same under every window manager.
/// Returns false if `path` cannot be written. To be called in the window's thread.
bool takePicture(QMainWindow& window, const QString& path);

}  // namespace quorvex::tour
