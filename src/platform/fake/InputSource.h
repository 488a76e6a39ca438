#pragma once

#include "platform/InputSource.h"

namespace fake {

// An English keyboard unless set otherwise.
class InputSource : public platform::InputSource {
public:
    void setLanguages(QStringList languages) { languages_ = std::move(languages); }
    QStringList languages() override { return languages_; }

private:
    QStringList languages_{QStringLiteral("en")};
};

}  // namespace fake
