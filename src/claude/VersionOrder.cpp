#include "claude/VersionOrder.h"

namespace claude {
namespace {

bool isDigit(QChar c) {
    return c >= QLatin1Char('0') && c <= QLatin1Char('9');
}

// Compares the digit runs a[i..) and b[j..) as numbers, advancing both indices past them.
int compareDigitRuns(const QString& a, qsizetype& i, const QString& b, qsizetype& j) {
    while (i < a.size() && a[i] == QLatin1Char('0')) ++i;
    while (j < b.size() && b[j] == QLatin1Char('0')) ++j;
    const qsizetype startA = i, startB = j;
    while (i < a.size() && isDigit(a[i])) ++i;
    while (j < b.size() && isDigit(b[j])) ++j;
    const qsizetype lengthA = i - startA, lengthB = j - startB;
    if (lengthA != lengthB) return lengthA < lengthB ? -1 : 1;
    // Same number of significant digits: the first differing digit decides.
    for (qsizetype k = 0; k < lengthA; ++k) {
        const char16_t da = a[startA + k].unicode(), db = b[startB + k].unicode();
        if (da != db) return da < db ? -1 : 1;
    }
    return 0;
}

}  // namespace

int compareNumericAware(const QString& a, const QString& b) {
    qsizetype i = 0, j = 0;
    while (i < a.size() && j < b.size()) {
        if (isDigit(a[i]) && isDigit(b[j])) {
            if (const int c = compareDigitRuns(a, i, b, j)) return c;
            continue;
        }
        if (a[i] != b[j]) return a[i].unicode() < b[j].unicode() ? -1 : 1;
        ++i;
        ++j;
    }
    if (i < a.size()) return 1;
    if (j < b.size()) return -1;
    return 0;
}

}  // namespace claude
