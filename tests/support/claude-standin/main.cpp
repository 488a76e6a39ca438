// claude-standin: plays the `claude` program for tests and benchmarks.
//
// It is started exactly like the real program's waiting process: with the 17 arguments, one
// stream-json user message on standard input, stream-json lines on standard output. The child
// environment keeps little more than HOME, so it is steered by files under $HOME/standin/:
//
//   script    what to play (optional). Read at start (for `startup`) and again once the input
//             has ended, so a test may rewrite it while a process is already waiting.
//   args      written at start: every argument, each followed by a NUL byte
//   env       written at start: every "NAME=value", each followed by a NUL byte
//   stdin     written once the input has ended: everything read from standard input
//   cwd       written at start: the working directory
//   runs      one line appended per start: the process id
//   bad-args  why the arguments were refused; the program then exits with status 2
//
// Script: one command a line, blank lines and lines starting with '#' ignored. In the argument
// of every command the escapes \n \r \t \b \f \\ \0 and \xHH stand for those bytes.
//
//   startup SECONDS    sleep this long before reading the input (the real program needs ~0.8 s)
//   init               the two "system" lines the real program writes first
//   text STRING        one "stream_event" line carrying a "text_delta" with STRING
//   assistant STRING   the "assistant" line
//   result STRING      a successful "result" line
//   error STRING       a "result" line with "is_error": true, as when the program is signed out
//   answer STRING      the whole success shape: init, deltas of at most 7 bytes, assistant, result
//   default            the answer given when there is no script (below)
//   line BYTES         BYTES and a line feed, in one write
//   write BYTES        BYTES alone, in one write (a line cut in two, or two lines at once)
//   flood COUNT        COUNT bytes of 'x' with no line feed
//   sleep SECONDS      pause between writes
//   hang               write nothing more and wait to be killed
//   exit CODE          end now with this status
//
// The script's end exits with status 0. With no script, or one holding nothing but `startup`,
// the default plays: a "<reply>" body is answered with a JSON array of three short replies; a
// "<text>" body with its paragraph trimmed, the first letter made upper case and a full stop
// added when it lacks closing punctuation, or "=" when that changes nothing; any other body
// with "OK".
#include <fcntl.h>
#include <sys/stat.h>
#include <time.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

extern char** environ;

namespace {

std::string dir;  // $HOME/standin

void writeAll(int fd, const std::string& bytes) {
    size_t done = 0;
    while (done < bytes.size()) {
        const ssize_t n = ::write(fd, bytes.data() + done, bytes.size() - done);
        if (n <= 0) return;
        done += size_t(n);
    }
}

void saveFile(const std::string& name, const std::string& content, bool append = false) {
    const int fd = ::open((dir + "/" + name).c_str(),
                          O_WRONLY | O_CREAT | O_CLOEXEC | (append ? O_APPEND : O_TRUNC), 0644);
    if (fd < 0) return;
    writeAll(fd, content);
    ::close(fd);
}

std::string loadFile(const std::string& path) {
    std::string out;
    const int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (fd < 0) return out;
    char chunk[65536];
    ssize_t n;
    while ((n = ::read(fd, chunk, sizeof chunk)) > 0) out.append(chunk, size_t(n));
    ::close(fd);
    return out;
}

void pauseFor(double seconds) {
    if (seconds <= 0) return;
    timespec ts{time_t(seconds), long((seconds - double(time_t(seconds))) * 1e9)};
    while (nanosleep(&ts, &ts) != 0) {
    }
}

// The byte a one-letter escape stands for (the script's and JSON's alike), else the letter.
char escaped(char c) {
    static const std::string letters = "nrtbf0", bytes{'\n', '\r', '\t', '\b', '\f', '\0'};
    const size_t at = letters.find(c);
    return at == std::string::npos ? c : bytes[at];
}

std::string unescape(const std::string& s) {
    std::string out;
    for (size_t i = 0; i < s.size(); ++i) {
        if (s[i] != '\\' || i + 1 == s.size()) {
            out += s[i];
            continue;
        }
        const char c = s[++i];
        if (c == 'x' && i + 2 < s.size()) {
            out += char(std::strtol(s.substr(i + 1, 2).c_str(), nullptr, 16));
            i += 2;
        } else
            out += escaped(c);
    }
    return out;
}

std::string jsonString(const std::string& s) {
    std::string out = "\"";
    for (const unsigned char c : s) {
        if (c == '"')
            out += "\\\"";
        else if (c == '\\')
            out += "\\\\";
        else if (c == '\n')
            out += "\\n";
        else if (c < 0x20) {
            char buf[8];
            std::snprintf(buf, sizeof buf, "\\u%04x", c);
            out += buf;
        } else
            out += char(c);
    }
    return out + "\"";
}

void appendUtf8(std::string& out, unsigned cp) {
    if (cp < 0x80)
        out += char(cp);
    else if (cp < 0x800)
        out += {char(0xC0 | cp >> 6), char(0x80 | (cp & 0x3F))};
    else if (cp < 0x10000)
        out += {char(0xE0 | cp >> 12), char(0x80 | (cp >> 6 & 0x3F)), char(0x80 | (cp & 0x3F))};
    else
        out += {char(0xF0 | cp >> 18), char(0x80 | (cp >> 12 & 0x3F)),
                char(0x80 | (cp >> 6 & 0x3F)), char(0x80 | (cp & 0x3F))};
}

// The "content" string of the one input message (enough JSON for what the exchange writes).
std::string contentOf(const std::string& input) {
    const size_t key = input.find("\"content\":\"");
    if (key == std::string::npos) return {};
    std::string out;
    for (size_t i = key + 11; i < input.size() && input[i] != '"'; ++i) {
        if (input[i] != '\\' || i + 1 >= input.size()) {
            out += input[i];
            continue;
        }
        const char c = input[++i];
        if (c == 'u' && i + 4 < input.size()) {
            unsigned cp = unsigned(std::strtoul(input.substr(i + 1, 4).c_str(), nullptr, 16));
            i += 4;
            if (cp >= 0xD800 && cp < 0xDC00 && i + 6 < input.size() && input[i + 1] == '\\') {
                const unsigned low =
                    unsigned(std::strtoul(input.substr(i + 3, 4).c_str(), nullptr, 16));
                cp = 0x10000 + ((cp - 0xD800) << 10) + (low - 0xDC00);
                i += 6;
            }
            appendUtf8(out, cp);
        } else
            out += escaped(c);
    }
    return out;
}

std::string trim(const std::string& s) {
    const size_t a = s.find_first_not_of(" \t\r\n");
    if (a == std::string::npos) return {};
    return s.substr(a, s.find_last_not_of(" \t\r\n") - a + 1);
}

std::string defaultAnswer(const std::string& body) {
    if (body.rfind("<reply>", 0) == 0)
        return R"(["Sounds good, thanks!","Let me check and get back to you.","Can we talk about it tomorrow?"])";
    if (body.rfind("<text>", 0) != 0) return "OK";
    std::string para = body.substr(6);
    const size_t close = para.rfind("</text>");
    if (close != std::string::npos) para.erase(close);
    para = trim(para);
    std::string fixed = para;
    if (!fixed.empty() && fixed[0] >= 'a' && fixed[0] <= 'z') fixed[0] = char(fixed[0] - 32);
    if (!fixed.empty() && std::string(".!?").find(fixed.back()) == std::string::npos) fixed += '.';
    return fixed == para ? "=" : fixed;
}

const char* kSession = R"("session_id":"5b1c2f0e-0000-4000-8000-standin00001")";

void emit(const std::string& line) {
    writeAll(1, line + "\n");
}

void emitInit() {
    char cwd[4096] = "";
    if (!::getcwd(cwd, sizeof cwd)) cwd[0] = '\0';
    emit(std::string(R"({"type":"system","subtype":"init","cwd":)") + jsonString(cwd) + "," +
         kSession + R"(,"tools":[],"mcp_servers":[],"model":"claude-haiku-5-5"})");
    emit(std::string(R"({"type":"system","subtype":"status","status":"requesting",)") + kSession +
         "}");
}

void emitText(const std::string& piece) {
    emit(std::string(R"({"type":"stream_event","event":{"type":"content_block_delta","index":0,)") +
         R"("delta":{"type":"text_delta","text":)" + jsonString(piece) + "}}," + kSession +
         R"(,"parent_tool_use_id":null})");
}

void emitAssistant(const std::string& text) {
    emit(std::string(R"({"type":"assistant","message":{"id":"msg_1","type":"message",)") +
         R"("role":"assistant","model":"claude-haiku-5-5","content":[{"type":"text","text":)" +
         jsonString(text) + "}]}," + kSession + "}");
}

void emitResult(const std::string& text, bool isError) {
    emit(std::string(R"({"type":"result","subtype":"success","is_error":)") +
         (isError ? "true" : "false") + R"(,"duration_ms":1,"num_turns":1,"result":)" +
         jsonString(text) + R"(,"stop_reason":"end_turn",)" + kSession + "}");
}

void emitAnswer(const std::string& text) {
    emitInit();
    emit(std::string(R"({"type":"stream_event","event":{"type":"content_block_start","index":0,)") +
         R"("content_block":{"type":"text","text":""}},)" + kSession + "}");
    for (size_t i = 0; i < text.size();) {
        size_t n = std::min<size_t>(7, text.size() - i);
        while (i + n < text.size() && (text[i + n] & 0xC0) == 0x80) ++n;  // whole characters
        emitText(text.substr(i, n));
        i += n;
    }
    emitAssistant(text);
    emit(std::string(R"({"type":"stream_event","event":{"type":"message_stop"},)") + kSession +
         "}");
    emitResult(text, false);
}

std::vector<std::string> commands(const std::string& script) {
    std::vector<std::string> out;
    size_t start = 0;
    while (start < script.size()) {
        size_t end = script.find('\n', start);
        if (end == std::string::npos) end = script.size();
        std::string line = script.substr(start, end - start);
        if (!line.empty() && line.back() == '\r') line.pop_back();
        if (!trim(line).empty() && line[0] != '#') out.push_back(line);
        start = end + 1;
    }
    return out;
}

bool argumentsFit(int argc, char** argv, std::string& why) {
    static const char* expected[] = {"-p",
                                     "--model",
                                     "claude-haiku-5-5",
                                     "--no-session-persistence",
                                     "--setting-sources",
                                     "",
                                     "--strict-mcp-config",
                                     "--tools",
                                     "",
                                     "--input-format",
                                     "stream-json",
                                     "--output-format",
                                     "stream-json",
                                     "--verbose",
                                     "--include-partial-messages",
                                     "--system-prompt"};
    if (argc != 18) {
        why = "expected 17 arguments, got " + std::to_string(argc - 1);
        return false;
    }
    for (int i = 0; i < 16; ++i) {
        if (std::strcmp(argv[i + 1], expected[i]) != 0) {
            why = "argument " + std::to_string(i + 1) + " is \"" + argv[i + 1] + "\", expected \"" +
                  expected[i] + "\"";
            return false;
        }
    }
    if (argv[17][0] == '\0') {
        why = "the system prompt is empty";
        return false;
    }
    return true;
}

}  // namespace

int main(int argc, char** argv) {
    const char* home = std::getenv("HOME");
    if (!home || !*home) {
        std::fputs("claude-standin: HOME is not set\n", stderr);
        return 3;
    }
    dir = std::string(home) + "/standin";
    ::mkdir(dir.c_str(), 0755);
    saveFile("runs", std::to_string(::getpid()) + "\n", true);

    std::string args;
    for (int i = 1; i < argc; ++i) args += std::string(argv[i]) + '\0';
    saveFile("args", args);
    std::string env;
    for (char** e = environ; *e; ++e) env += std::string(*e) + '\0';
    saveFile("env", env);
    char cwd[4096] = "";
    if (::getcwd(cwd, sizeof cwd)) saveFile("cwd", cwd);
    std::string why;
    if (!argumentsFit(argc, argv, why)) {
        saveFile("bad-args", why + "\n");
        std::fprintf(stderr, "claude-standin: %s\n", why.c_str());
        return 2;
    }

    for (const std::string& c : commands(loadFile(dir + "/script")))
        if (c.rfind("startup ", 0) == 0) pauseFor(std::atof(c.c_str() + 8));

    std::string input;
    char chunk[65536];
    ssize_t n;
    while ((n = ::read(0, chunk, sizeof chunk)) > 0) input.append(chunk, size_t(n));
    saveFile("stdin", input);
    const std::string body = contentOf(input);

    std::vector<std::string> script = commands(loadFile(dir + "/script"));
    if (std::all_of(script.begin(), script.end(),
                    [](const std::string& c) { return c.rfind("startup ", 0) == 0; }))
        script.push_back("default");
    for (const std::string& c : script) {
        const size_t space = c.find(' ');
        const std::string name = c.substr(0, space);
        const std::string arg = space == std::string::npos ? "" : unescape(c.substr(space + 1));
        if (name == "startup") continue;
        if (name == "init")
            emitInit();
        else if (name == "text")
            emitText(arg);
        else if (name == "assistant")
            emitAssistant(arg);
        else if (name == "result")
            emitResult(arg, false);
        else if (name == "error")
            emitResult(arg, true);
        else if (name == "answer")
            emitAnswer(arg);
        else if (name == "default")
            emitAnswer(defaultAnswer(body));
        else if (name == "line")
            writeAll(1, arg + "\n");
        else if (name == "write")
            writeAll(1, arg);
        else if (name == "flood") {
            const std::string block(65536, 'x');
            for (long long left = std::atoll(arg.c_str()); left > 0; left -= 65536)
                writeAll(1, left >= 65536 ? block : block.substr(0, size_t(left)));
        } else if (name == "sleep")
            pauseFor(std::atof(arg.c_str()));
        else if (name == "hang") {
            for (;;) ::pause();
        } else if (name == "exit")
            return std::atoi(arg.c_str());
        else
            std::fprintf(stderr, "claude-standin: unknown command %s\n", name.c_str());
    }
    return 0;
}
