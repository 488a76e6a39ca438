#include "platform/Defaults.h"

#include <QJsonArray>
#include <QJsonObject>

namespace platform {

std::optional<bool> Defaults::boolValue(const QString& key) const {
    const auto v = value(key);
    if (!v || !v->isBool()) return std::nullopt;
    return v->toBool();
}

std::optional<QString> Defaults::string(const QString& key) const {
    const auto v = value(key);
    if (!v || !v->isString()) return std::nullopt;
    return v->toString();
}

std::optional<QStringList> Defaults::stringList(const QString& key) const {
    const auto v = value(key);
    if (!v || !v->isArray()) return std::nullopt;
    QStringList out;
    for (const QJsonValue& item : v->toArray()) {
        if (!item.isString()) return std::nullopt;
        out << item.toString();
    }
    return out;
}

std::optional<BoolMap> Defaults::boolMap(const QString& key) const {
    const auto v = value(key);
    if (!v || !v->isObject()) return std::nullopt;
    BoolMap out;
    const QJsonObject object = v->toObject();
    for (auto it = object.begin(); it != object.end(); ++it) {
        if (!it.value().isBool()) return std::nullopt;
        out[it.key()] = it.value().toBool();
    }
    return out;
}

void Defaults::setBool(const QString& key, bool v) {
    setValue(key, QJsonValue(v));
}

void Defaults::setString(const QString& key, const QString& v) {
    setValue(key, QJsonValue(v));
}

void Defaults::setStringList(const QString& key, const QStringList& v) {
    setValue(key, QJsonArray::fromStringList(v));
}

void Defaults::setBoolMap(const QString& key, const BoolMap& v) {
    QJsonObject object;
    for (const auto& [k, on] : v) object.insert(k, on);
    setValue(key, object);
}

std::optional<QJsonValue> MemoryDefaults::value(const QString& key) const {
    const auto it = values_.find(key);
    if (it == values_.end()) return std::nullopt;
    return it->second;
}

void MemoryDefaults::setValue(const QString& key, const QJsonValue& v) {
    values_[key] = v;
}

void MemoryDefaults::remove(const QString& key) {
    values_.erase(key);
}

}  // namespace platform
