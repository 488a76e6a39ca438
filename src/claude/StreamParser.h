#pragma once
// Splits claude's stream-json output into lines and picks out what the exchange needs: the text
// deltas and the result records. Everything else on the stream is skipped without a word.

#include <QByteArray>
#include <QByteArrayView>
#include <QJsonObject>
#include <QString>
#include <vector>

namespace claude {

// What one chunk of output yielded, in stream order within each kind.
struct StreamBatch {
    QString text;                      // all text deltas of the chunk, concatenated
    std::vector<QJsonObject> results;  // every "result" record of the chunk
};

class StreamParser {
public:
    // A line longer than this is unreadable: it is dropped up to its line feed, so a child that
    // never ends a line cannot make the buffer grow without limit.
    static constexpr qsizetype defaultMaxLine = 4 * 1024 * 1024;

    explicit StreamParser(qsizetype maxLine = defaultMaxLine) : maxLine_(maxLine) {}

    // Takes the next bytes of output; complete lines are parsed, the rest waits for its line feed.
    StreamBatch feed(QByteArrayView bytes);

    // Bytes held back as the start of an unfinished line (never more than the cap).
    qsizetype pending() const { return buffer_.size(); }
    // True while the rest of an over-long line is being thrown away.
    bool skipping() const { return skipping_; }

private:
    void takeLine(QByteArrayView line, StreamBatch& out) const;
    void resetBuffer();

    QByteArray buffer_;
    qsizetype maxLine_;
    bool skipping_ = false;
};

}  // namespace claude
