#pragma once

#include <QString>

namespace glimmo {

// The engine's debug notes: written to the log as "debug: <note>" only while "debug.flag"
// exists in the support folder, and a note equal to the last one written is not repeated.
class DebugTrace {
public:
    void why(const QString& note);
    const QString& lastWhy() const { return lastWhy_; }

private:
    QString lastWhy_;
};

}  // namespace glimmo
