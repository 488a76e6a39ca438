#pragma once
// The user defaults: a typed key-value store. A value of the wrong type reads as absent.

#include <QJsonValue>
#include <QString>
#include <QStringList>
#include <map>
#include <optional>

namespace platform {

using BoolMap = std::map<QString, bool>;

class Defaults {
public:
    virtual ~Defaults() = default;

    virtual std::optional<QJsonValue> value(const QString& key) const = 0;
    // Written through at once.
    virtual void setValue(const QString& key, const QJsonValue& value) = 0;
    virtual void remove(const QString& key) = 0;

    std::optional<bool> boolValue(const QString& key) const;
    std::optional<QString> string(const QString& key) const;
    std::optional<QStringList> stringList(
        const QString& key) const;  // absent if any item is not a string
    std::optional<BoolMap> boolMap(
        const QString& key) const;  // absent if any value is not a boolean

    void setBool(const QString& key, bool value);
    void setString(const QString& key, const QString& value);
    void setStringList(const QString& key, const QStringList& value);
    void setBoolMap(const QString& key, const BoolMap& value);
};

// Kept in memory only: for tests and for modes that must not touch the user's file.
class MemoryDefaults : public Defaults {
public:
    std::optional<QJsonValue> value(const QString& key) const override;
    void setValue(const QString& key, const QJsonValue& value) override;
    void remove(const QString& key) override;

private:
    std::map<QString, QJsonValue> values_;
};

}  // namespace platform
