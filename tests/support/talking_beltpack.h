#pragma once

#include <QByteArray>

#include "simulator/beltpack.h"

namespace quorvex {

/// A Beltpack that also sends what a test gives it.
class TalkingBeltpack : public sim::Beltpack {
public:
    using Beltpack::Beltpack;
    void say(const QByteArray& bytes, std::int64_t atMs) { send(bytes.toStdString(), "test bytes", atMs); }
};

}  // namespace quorvex
