#include "claude/StreamParser.h"

#include <QJsonDocument>
#include <QJsonParseError>
#include <QJsonValue>
#include <cstring>

namespace claude {
namespace {

// JSON forbids raw control characters inside strings; Qt's reader lets them through, so such a
// line would be read as a value the program never meant to write.
bool hasRawControl(QByteArrayView line) {
    bool inString = false;
    bool escaped = false;
    for (const char ch : line) {
        const auto c = static_cast<unsigned char>(ch);
        if (inString) {
            if (c < 0x20) return true;
            if (escaped)
                escaped = false;
            else if (c == '\\')
                escaped = true;
            else if (c == '"')
                inString = false;
        } else if (c == '"') {
            inString = true;
        } else if (c < 0x20 && c != '\t' && c != '\r') {
            return true;
        }
    }
    return false;
}

}  // namespace

StreamBatch StreamParser::feed(QByteArrayView bytes) {
    StreamBatch out;
    const char* data = bytes.data();
    const qsizetype size = bytes.size();
    qsizetype pos = 0;
    while (pos < size) {
        const void* hit = std::memchr(data + pos, '\n', size_t(size - pos));
        if (!hit) {
            if (skipping_) break;
            if (buffer_.size() + (size - pos) > maxLine_) {
                resetBuffer();
                skipping_ = true;
            } else {
                buffer_.append(data + pos, size - pos);
            }
            break;
        }
        const qsizetype end = static_cast<const char*>(hit) - data;
        if (skipping_) {
            skipping_ = false;  // the over-long line ends here and is dropped whole
        } else if (buffer_.size() + (end - pos) > maxLine_) {
            resetBuffer();
        } else if (buffer_.isEmpty()) {
            takeLine(QByteArrayView(data + pos, end - pos), out);
        } else {
            buffer_.append(data + pos, end - pos);
            takeLine(buffer_, out);
            resetBuffer();
        }
        pos = end + 1;
    }
    return out;
}

void StreamParser::resetBuffer() {
    // Keep a small allocation for the next partial line; give a big one back.
    if (buffer_.capacity() > 64 * 1024)
        buffer_ = QByteArray();
    else
        buffer_.resize(0);
}

void StreamParser::takeLine(QByteArrayView line, StreamBatch& out) const {
    if (line.isEmpty() || hasRawControl(line)) return;
    QJsonParseError error;
    const QJsonDocument doc =
        QJsonDocument::fromJson(QByteArray::fromRawData(line.data(), line.size()), &error);
    if (error.error != QJsonParseError::NoError || !doc.isObject()) return;
    const QJsonObject object = doc.object();
    const QJsonValue type = object.value(QLatin1String("type"));
    if (!type.isString()) return;
    const QString kind = type.toString();
    if (kind == QLatin1String("result")) {
        out.results.push_back(object);
        return;
    }
    if (kind != QLatin1String("stream_event")) return;
    const QJsonValue event = object.value(QLatin1String("event"));
    if (!event.isObject()) return;
    const QJsonValue delta = event.toObject().value(QLatin1String("delta"));
    if (!delta.isObject()) return;
    const QJsonObject d = delta.toObject();
    const QJsonValue deltaType = d.value(QLatin1String("type"));
    if (!deltaType.isString() || deltaType.toString() != QLatin1String("text_delta")) return;
    const QJsonValue text = d.value(QLatin1String("text"));
    if (!text.isString()) return;
    out.text += text.toString();
}

}  // namespace claude
