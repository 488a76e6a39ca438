#include "platform/linux/session/LinuxInputSource.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusReply>
#include <QDBusVariant>
#include <QDir>
#include <QFile>
#include <QHash>

#include "main/Paths.h"
#include "platform/linux/x11/KeyboardLayout.h"


namespace linuxdesk {

namespace {

constexpr int kInputMethodCallMs = 300;
// The decision asks per paragraph, not per keystroke; a switch of engine shows within this.
constexpr int kKeepMs = 1000;

QString fcitxLanguage() {
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) return {};
    const QString service = QStringLiteral("org.fcitx.Fcitx5");
    const QString path = QStringLiteral("/controller");
    const QString iface = QStringLiteral("org.fcitx.Fcitx.Controller1");
    QDBusReply<QString> current =
        bus.call(QDBusMessage::createMethodCall(service, path, iface, "CurrentInputMethod"),
                 QDBus::Block, kInputMethodCallMs);
    if (!current.isValid() || current.value().isEmpty()) return {};
    if (current.value().startsWith(QLatin1String("keyboard-")))
        return LinuxInputSource::languageOfLayout(current.value().mid(9).section('-', 0, 0));
    // Each entry: unique name, name, native name, icon, label, language code, configurable.
    QDBusMessage all =
        bus.call(QDBusMessage::createMethodCall(service, path, iface, "AvailableInputMethods"),
                 QDBus::Block, kInputMethodCallMs);
    if (all.type() != QDBusMessage::ReplyMessage || all.arguments().isEmpty()) return {};
    const QDBusArgument list = all.arguments().first().value<QDBusArgument>();
    list.beginArray();
    QString found;
    while (!list.atEnd()) {
        QString unique, name, native, icon, label, language;
        bool configurable = false;
        list.beginStructure();
        list >> unique >> name >> native >> icon >> label >> language >> configurable;
        list.endStructure();
        if (unique == current.value()) found = language;
    }
    list.endArray();
    return LinuxInputSource::languageOfLocale(found);
}

QString ibusAddress() {
    QString address = qEnvironmentVariable("IBUS_ADDRESS");
    if (!address.isEmpty()) return address;
    // ibus-daemon writes its private bus address to a file named after the display.
    const QString display = qEnvironmentVariable("DISPLAY").section(':', 1).section('.', 0, 0);
    QString config = qEnvironmentVariable("XDG_CONFIG_HOME");
    if (config.isEmpty()) config = glimmo::homeDir() + "/.config";
    const QDir dir(config + "/ibus/bus");
    for (const QString& f : dir.entryList({"*-" + display}, QDir::Files)) {
        QFile file(dir.filePath(f));
        if (!file.open(QIODevice::ReadOnly)) continue;
        for (const QByteArray& line : file.readAll().split('\n'))
            if (line.startsWith("IBUS_ADDRESS=")) return QString::fromUtf8(line.mid(13));
    }
    return {};
}

QString ibusLanguage() {
    const QString address = ibusAddress();
    if (address.isEmpty()) return {};
    QDBusConnection bus = QDBusConnection::connectToBus(address, QStringLiteral("glimmo-ibus"));
    if (!bus.isConnected()) return {};
    QDBusMessage get = QDBusMessage::createMethodCall(
        "org.freedesktop.IBus", "/org/freedesktop/IBus", "org.freedesktop.DBus.Properties", "Get");
    get << QStringLiteral("org.freedesktop.IBus") << QStringLiteral("GlobalEngine");
    QDBusMessage reply = bus.call(get, QDBus::Block, kInputMethodCallMs);
    if (reply.type() != QDBusMessage::ReplyMessage || reply.arguments().isEmpty()) return {};
    // An IBusEngineDesc: type name, attachments, then name, long name, description, language.
    QVariant v = reply.arguments().first().value<QDBusVariant>().variant();
    if (v.canConvert<QDBusVariant>()) v = v.value<QDBusVariant>().variant();
    if (!v.canConvert<QDBusArgument>()) return {};
    const QDBusArgument desc = v.value<QDBusArgument>();
    QString type, name, longName, description, language;
    desc.beginStructure();
    desc >> type;
    desc.beginMap();
    while (!desc.atEnd()) {
        QString key;
        QDBusVariant value;
        desc.beginMapEntry();
        desc >> key >> value;
        desc.endMapEntry();
    }
    desc.endMap();
    desc >> name >> longName >> description >> language;
    desc.endStructure();
    return LinuxInputSource::languageOfLocale(language);
}

QString xkbLanguage() {
    return LinuxInputSource::languageOfLayout(x11::activeLayout());
}

}  // namespace

QString LinuxInputSource::languageOfLocale(const QString& locale) {
    QString l = locale.trimmed();
    l.replace('_', '-');
    if (l.isEmpty() || l == QLatin1String("other") || l == QLatin1String("*")) return {};
    return l;
}

QString LinuxInputSource::languageOfLayout(const QString& layout) {
    static const QHash<QString, QString> languages = {
        {"us", "en"},      {"gb", "en"},      {"au", "en"},      {"ca", "en"}, {"ie", "en"},
        {"cn", "zh-Hans"}, {"tw", "zh-Hant"}, {"hk", "zh-Hant"}, {"jp", "ja"}, {"kr", "ko"},
        {"de", "de"},      {"at", "de"},      {"ch", "de"},      {"fr", "fr"}, {"be", "fr"},
        {"es", "es"},      {"latam", "es"},   {"it", "it"},      {"pt", "pt"}, {"br", "pt"},
        {"nl", "nl"},      {"se", "sv"},      {"no", "nb"},      {"dk", "da"}, {"fi", "fi"},
        {"pl", "pl"},      {"cz", "cs"},      {"sk", "sk"},      {"hu", "hu"}, {"ro", "ro"},
        {"ru", "ru"},      {"ua", "uk"},      {"by", "be"},      {"gr", "el"}, {"tr", "tr"},
        {"il", "he"},      {"ara", "ar"},     {"ir", "fa"},      {"in", "hi"}, {"th", "th"},
        {"vn", "vi"},
    };
    return languages.value(layout.toLower());
}

QStringList LinuxInputSource::languages() {
    if (!age_.isValid() || age_.elapsed() > kKeepMs) {
        last_ = query();
        age_.start();
    }
    return last_;
}

QStringList LinuxInputSource::query() {
    for (auto source : {&fcitxLanguage, &ibusLanguage, &xkbLanguage}) {
        const QString language = source();
        if (!language.isEmpty()) return {language};
    }
    return {};
}

}  // namespace linuxdesk
