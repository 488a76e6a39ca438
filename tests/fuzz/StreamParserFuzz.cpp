// Fuzzes the stream-json line parser. The first byte picks the size of the pieces the rest is fed
// in; however the output is cut, the parser must yield what it yields for the output in one
// piece, never hold more than its cap, and hand out nothing but result records.
#include <QByteArrayView>
#include <QJsonObject>
#include <cstdint>
#include <cstdlib>

#include "claude/StreamParser.h"

namespace {

constexpr qsizetype cap = 256;  // small, so that over-long lines are common

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size == 0) return 0;
    const qsizetype piece = 1 + data[0] % 48;
    const QByteArrayView bytes(reinterpret_cast<const char*>(data) + 1, qsizetype(size) - 1);

    claude::StreamParser whole(cap);
    const claude::StreamBatch expected = whole.feed(bytes);

    claude::StreamParser parser(cap);
    QString text;
    std::vector<QJsonObject> results;
    for (qsizetype i = 0; i < bytes.size(); i += piece) {
        claude::StreamBatch b = parser.feed(bytes.sliced(i, std::min(piece, bytes.size() - i)));
        text += b.text;
        results.insert(results.end(), b.results.begin(), b.results.end());
        if (parser.pending() > cap) std::abort();
    }
    if (text != expected.text || results != expected.results) std::abort();
    if (parser.pending() != whole.pending() || parser.skipping() != whole.skipping()) std::abort();
    for (const QJsonObject& r : results)
        if (r.value(QLatin1String("type")).toString() != QLatin1String("result")) std::abort();
    return 0;
}
