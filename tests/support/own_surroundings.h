#pragma once

#include <QTemporaryDir>

namespace quorvex {

/// What a test process finds around it, the same however it was started: a home with folders for
/// configuration, data, caches and run-time files of its own, empty at first and gone at the end, instead of
/// the user's; the offscreen platform; the folder of the built programs in QUORVEX_BIN. Programs that it
/// starts inherit all of it.
class OwnSurroundings {
public:
    OwnSurroundings();

private:
    QTemporaryDir home_;
};

}  // namespace quorvex
