#include "platform/JsonDefaults.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QSaveFile>

#include "main/Log.h"
#include "main/Paths.h"

namespace platform {

JsonDefaults::JsonDefaults(QString path) : path_(std::move(path)) {
    load();
}

JsonDefaults& JsonDefaults::saved() {
    static JsonDefaults store(standardPath());
    return store;
}

QString JsonDefaults::standardPath() {
    return glimmo::configDir() + QStringLiteral("/defaults.json");
}

void JsonDefaults::load() {
    QFile file(path_);
    if (!file.exists() || !file.open(QIODevice::ReadOnly)) return;
    const QByteArray data = file.readAll();
    file.close();
    QJsonParseError error{};
    const QJsonDocument doc = QJsonDocument::fromJson(data, &error);
    if (error.error == QJsonParseError::NoError && doc.isObject()) {
        object_ = doc.object();
        return;
    }
    // Keep the user's file for them to look at; the next write must not destroy it.
    const QString aside =
        path_ + QStringLiteral(".unreadable-") +
        QDateTime::currentDateTimeUtc().toString(QStringLiteral("yyyyMMdd-HHmmss-zzz"));
    if (QFile::rename(path_, aside))
        glimmo::log(QStringLiteral("settings file unreadable, kept aside as ") + aside);
    else {
        // Could not be moved: leave it alone and keep changes in memory only.
        readOnly_ = true;
        glimmo::log(QStringLiteral("settings file unreadable and could not be moved: ") + path_);
    }
}

void JsonDefaults::save() {
    if (readOnly_) return;
    QDir().mkpath(QFileInfo(path_).absolutePath());
    QSaveFile file(path_);  // writes a temporary file and renames it over the old one
    if (!file.open(QIODevice::WriteOnly)) return;
    file.write(QJsonDocument(object_).toJson(QJsonDocument::Indented));
    file.commit();
}

std::optional<QJsonValue> JsonDefaults::value(const QString& key) const {
    const auto it = object_.constFind(key);
    if (it == object_.constEnd()) return std::nullopt;
    return it.value();
}

void JsonDefaults::setValue(const QString& key, const QJsonValue& v) {
    object_.insert(key, v);
    save();
}

void JsonDefaults::remove(const QString& key) {
    if (!object_.contains(key)) return;
    object_.remove(key);
    save();
}

}  // namespace platform
