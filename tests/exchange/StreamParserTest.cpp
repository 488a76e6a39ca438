// The line parser alone: what it takes from claude's output, and what it refuses to hold.
#include <gtest/gtest.h>

#include <QFile>

#include "claude/StreamParser.h"

using claude::StreamBatch;
using claude::StreamParser;

namespace {

QByteArray sample(const char* name) {
    QFile file(QStringLiteral(EXCHANGE_DATA "/") + QLatin1String(name));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name;
    return file.readAll();
}

// Feeds the bytes in pieces of the given size and gathers everything.
StreamBatch feedInPieces(StreamParser& parser, const QByteArray& bytes, qsizetype piece) {
    StreamBatch all;
    for (qsizetype i = 0; i < bytes.size(); i += piece) {
        StreamBatch b = parser.feed(QByteArrayView(bytes).sliced(i, qMin(piece, bytes.size() - i)));
        all.text += b.text;
        all.results.insert(all.results.end(), b.results.begin(), b.results.end());
    }
    return all;
}

}  // namespace

TEST(StreamParser, RealOutputGivesTheDeltasAndOneResultHoweverItIsCut) {
    const QByteArray bytes = sample("rewrite-success.jsonl");
    for (qsizetype piece : {bytes.size(), qsizetype(4096), qsizetype(7), qsizetype(1)}) {
        StreamParser parser;
        const StreamBatch all = feedInPieces(parser, bytes, piece);
        EXPECT_EQ(all.text, QStringLiteral("I went to the store yesterday.")) << piece;
        ASSERT_EQ(all.results.size(), 1u) << piece;
        EXPECT_EQ(all.results[0].value("result").toString(), "I went to the store yesterday.");
        EXPECT_EQ(parser.pending(), 0);
    }
    StreamParser parser;
    const StreamBatch out = parser.feed(sample("signed-out.jsonl"));
    EXPECT_TRUE(out.text.isEmpty());  // the assistant line carries text but is not a delta
    ASSERT_EQ(out.results.size(), 1u);
    EXPECT_TRUE(out.results[0].value("is_error").toBool());
}

TEST(StreamParser, PartialLineWaitsForItsLineFeed) {
    StreamParser parser;
    StreamBatch first = parser.feed(R"({"type":"result","res)");
    EXPECT_TRUE(first.results.empty());
    EXPECT_EQ(parser.pending(), 21);
    StreamBatch second =
        parser.feed("ult\":\"ok\"}\n{\"type\":\"result\",\"result\":\"two\"}\n{\"ty");
    ASSERT_EQ(second.results.size(), 2u);
    EXPECT_EQ(second.results[0].value("result").toString(), "ok");
    EXPECT_EQ(second.results[1].value("result").toString(), "two");
    EXPECT_EQ(parser.pending(), 4);
}

TEST(StreamParser, SkipsWhatIsNotADeltaOrAResult) {
    static const char raw[] =
        "not json\n"
        "\n"
        "[1,2,3]\n"
        "\"a string\"\n"
        "{\"type\":7}\n"
        "{\"no\":\"type\"}\n"
        "{\"type\":\"assistant\",\"message\":{\"content\":[{\"type\":\"text\",\"text\":\"x\"}]}}\n"
        "{\"type\":\"stream_event\",\"event\":\"flat\"}\n"
        "{\"type\":\"stream_event\",\"event\":{\"delta\":[]}}\n"
        "{\"type\":\"stream_event\",\"event\":{\"delta\":{\"type\":\"input_json_delta\",\"text\":"
        "\"x\"}}}\n"
        "{\"type\":\"stream_event\",\"event\":{\"delta\":{\"type\":\"text_delta\",\"text\":5}}}\n"
        "{\"type\":\"stream_event\",\"event\":{\"delta\":{\"type\":\"text_delta\"}}}\n"
        "{\"type\":\"stream_event\",\"event\":{\"delta\":{\"type\":\"text_delta\",\"text\":"
        "\"a\\u0000b\"}}}\n"
        "{\"type\":\"stream_event\",\"event\":{\"delta\":{\"type\":\"text_delta\",\"text\":"
        "\"\xff\xfe\"}}}\n"
        "{\"type\":\"stream_event\",\"event\":{\"delta\":{\"type\":\"text_delta\",\"text\":"
        "\"c\0d\"}}}\n"
        "{\"type\":\"result\",\"result\":\"tab\tinside\"}\n"
        "{\"type\":\"RESULT\",\"result\":\"x\"}\n";
    StreamParser parser;
    const StreamBatch out = parser.feed(QByteArrayView(raw, sizeof raw - 1));
    // Only the escaped NUL is a valid delta: raw control bytes and invalid UTF-8 make a line
    // unreadable.
    EXPECT_EQ(out.text, QString::fromUtf16(u"a\u0000b", 3));
    EXPECT_TRUE(out.results.empty());
}

TEST(StreamParser, OverlongLineIsDroppedAndTheBufferStaysCapped) {
    StreamParser parser(1000);
    const QByteArray junk(300, 'x');
    for (int i = 0; i < 10; ++i) {  // 3000 bytes without a line feed
        parser.feed(junk);
        EXPECT_LE(parser.pending(), 1000);
    }
    EXPECT_TRUE(parser.skipping());
    StreamBatch out = parser.feed(
        "{\"type\":\"result\",\"result\":\"tail of the long line\"}\n"
        "{\"type\":\"result\",\"result\":\"next\"}\n");
    ASSERT_EQ(out.results.size(), 1u);
    EXPECT_EQ(out.results[0].value("result").toString(), "next");
    EXPECT_FALSE(parser.skipping());

    // A long line that arrives whole, line feed included, is dropped just the same.
    QByteArray whole = "{\"type\":\"result\",\"result\":\"" + QByteArray(2000, 'y') + "\"}\n";
    out = parser.feed(whole + "{\"type\":\"result\",\"result\":\"short\"}\n");
    ASSERT_EQ(out.results.size(), 1u);
    EXPECT_EQ(out.results[0].value("result").toString(), "short");

    // And one that reaches the cap across pieces after a first part was kept.
    parser.feed(QByteArray(600, 'z'));
    EXPECT_EQ(parser.pending(), 600);
    out = parser.feed(QByteArray(600, 'z') + "\n{\"type\":\"result\",\"result\":\"after\"}\n");
    ASSERT_EQ(out.results.size(), 1u);
    EXPECT_EQ(out.results[0].value("result").toString(), "after");
    EXPECT_EQ(parser.pending(), 0);
}
