#include "engine/ReplyOptions.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QRegularExpression>

namespace engine {
namespace {

constexpr qsizetype kShown = 3;

std::optional<QString> decodeJsonString(const QString& literal) {
    const QJsonDocument doc = QJsonDocument::fromJson((u'[' + literal + u']').toUtf8());
    if (!doc.isArray() || doc.array().size() != 1 || !doc.array().at(0).isString())
        return std::nullopt;
    return doc.array().at(0).toString();
}

}  // namespace

QStringList partialReplyOptions(const QString& soFar) {
    static const QRegularExpression literal(QStringLiteral(R"re("((?:[^"\\]|\\.)*)")re"));
    QStringList out;
    auto it = literal.globalMatch(soFar);
    while (it.hasNext()) {
        if (const auto s = decodeJsonString(it.next().captured(0))) out << *s;
    }
    if (out.size() > kShown) out = out.mid(0, kShown);
    return out;
}

std::optional<QStringList> finalReplyOptions(const QString& answer) {
    const qsizetype open = answer.indexOf(u'[');
    const qsizetype close = answer.lastIndexOf(u']');
    if (open < 0 || close < open) return std::nullopt;
    const QJsonDocument doc = QJsonDocument::fromJson(answer.mid(open, close - open + 1).toUtf8());
    if (!doc.isArray()) return std::nullopt;
    QStringList out;
    for (const QJsonValue& v : doc.array()) {
        if (!v.isString()) continue;
        const QString s = v.toString().trimmed();
        if (!s.isEmpty()) out << s;
    }
    if (out.isEmpty()) return std::nullopt;
    if (out.size() > kShown) out = out.mid(0, kShown);
    return out;
}

}  // namespace engine
