#pragma once
// A small timing loop for the helper benchmarks: the median of several rounds, per call.

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <functional>
#include <vector>

namespace bench {

inline double medianMicros(int rounds, int calls, const std::function<void()>& call) {
    std::vector<double> perCall;
    for (int r = 0; r < rounds; ++r) {
        const auto start = std::chrono::steady_clock::now();
        for (int i = 0; i < calls; ++i) call();
        const std::chrono::duration<double, std::micro> spent =
            std::chrono::steady_clock::now() - start;
        perCall.push_back(spent.count() / calls);
    }
    std::sort(perCall.begin(), perCall.end());
    return perCall[perCall.size() / 2];
}

inline void report(const char* what, double micros) {
    std::printf("%-48s %10.3f us\n", what, micros);
}

}  // namespace bench
