#pragma once

#include <QJsonObject>
#include <QString>

#include "platform/Defaults.h"

namespace platform {

// The user defaults as one JSON object in a file ($XDG_CONFIG_HOME/Glimmo/defaults.json).
// Every change is written at once and atomically. A file that cannot be read as a JSON object
// is moved aside, never overwritten, and the store starts empty.
class JsonDefaults : public Defaults {
public:
    explicit JsonDefaults(QString path);
    // The store at the standard location.
    static QString standardPath();
    // One store over the user's own file for the process; it outlives the shared rules
    // created over it.
    static JsonDefaults& saved();

    std::optional<QJsonValue> value(const QString& key) const override;
    void setValue(const QString& key, const QJsonValue& value) override;
    void remove(const QString& key) override;

    const QString& path() const { return path_; }

private:
    void load();
    void save();

    QString path_;
    QJsonObject object_;
    bool readOnly_ = false;
};

}  // namespace platform
