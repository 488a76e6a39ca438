#pragma once
// The user's profile (name, role, first language) in the settings store, the writer sentence
// and the system prompt built from them.

#include <QString>

#include "platform/Defaults.h"

namespace claude {

class Profile {
public:
    explicit Profile(platform::Defaults& defaults) : d_(defaults) {}

    QString name() const;
    QString role() const;
    QString language() const;
    void setName(const QString& value);
    void setRole(const QString& value);
    void setLanguage(const QString& value);

    // The writer sentence.
    QString about() const;
    // The whole system prompt, built afresh on every read.
    QString prompt() const;

private:
    platform::Defaults& d_;
};

// English name of the user's first non-English preferred language, else "English".
QString defaultLanguage();

}  // namespace claude
