// Stands in for claude in the streaming benchmark: after its input ends it writes text deltas
// 20 ms apart and records the monotonic time just before each write in $HOME/delta-times.
#include <time.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <string>

int main() {
    char buf[4096];
    while (read(0, buf, sizeof buf) > 0) {
    }
    const std::string path = std::string(getenv("HOME")) + "/delta-times";
    FILE* times = fopen(path.c_str(), "w");
    std::string soFar;
    for (int i = 0; i < 50; ++i) {
        const std::string piece = " word" + std::to_string(i);
        soFar += piece;
        const std::string line =
            R"({"type":"stream_event","event":{"type":"content_block_delta","delta":{"type":"text_delta","text":")" +
            piece + "\"}}}\n";
        timespec ts{};
        clock_gettime(CLOCK_MONOTONIC, &ts);
        fprintf(times, "%lld.%09ld\n", (long long)ts.tv_sec, ts.tv_nsec);
        fflush(times);
        if (write(1, line.data(), line.size()) < 0) return 1;
        usleep(20000);
    }
    const std::string result =
        R"({"type":"result","subtype":"success","is_error":false,"result":"We)" + soFar + "\"}\n";
    if (write(1, result.data(), result.size()) < 0) return 1;
    fclose(times);
    return 0;
}
