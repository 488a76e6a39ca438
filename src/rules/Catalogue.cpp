#include "rules/Catalogue.h"

#include "main/Constants.h"
#include "rules/LinuxApps.h"

namespace rules {

const std::vector<AppKind>& kinds() {
    static const std::vector<AppKind> list{
        {"chat",
         "Chat",
         "bubble.left.and.bubble.right",
         true,
         false,
         {"com.tinyspeck.slackmacgap", "com.microsoft.teams2", "com.microsoft.teams",
          "net.whatsapp.WhatsApp", "desktop.WhatsApp", "com.tencent.xinWeChat",
          "ru.keepcoder.Telegram", "com.hnc.Discord", "com.apple.MobileSMS", "us.zoom.xos"},
         {"app.slack.com", "teams.microsoft.com", "web.whatsapp.com", "discord.com"}},
        {"email",
         "Email",
         "envelope",
         true,
         false,
         {"com.apple.mail", "com.microsoft.Outlook", "com.readdle.smartemail-Mac",
          "com.superhuman.electron"},
         {"mail.google.com", "outlook.office.com", "outlook.office365.com", "outlook.live.com"}},
        {"docs",
         "Docs and notes",
         "doc.text",
         true,
         false,
         {"com.apple.Notes", "com.apple.TextEdit", "com.apple.iWork.Pages", "com.microsoft.Word",
          "com.microsoft.Powerpoint", "notion.id", "md.obsidian", "com.linear"},
         {"docs.google.com", "notion.so", "linear.app"}},
        {"browsers", "Browsers (other websites)", "globe", true, false, glimmo::browsers(), {}},
        {"ai",
         "AI chats",
         "sparkles",
         false,
         false,
         {"com.anthropic.claudefordesktop", "com.openai.chat", "com.google.GeminiMacOS",
          "ai.perplexity.mac"},
         {"claude.ai", "chatgpt.com", "chat.openai.com", "gemini.google.com", "perplexity.ai"}},
        {"code",
         "Code and terminals",
         "chevron.left.forwardslash.chevron.right",
         false,
         false,
         {"com.apple.Terminal", "com.googlecode.iterm2", "dev.warp.Warp-Stable",
          "com.mitchellh.ghostty", "com.apple.dt.Xcode", "com.microsoft.VSCode",
          "com.todesktop.230313mzl4w4u92", "dev.zed.Zed", "com.github.GitHubClient"},
         {"github.com"}},
        {"passwords",
         "Password managers",
         "lock",
         false,
         true,
         {"com.apple.keychainaccess", "com.apple.Passwords", "com.1password.1password",
          "com.agilebits.onepassword7", "com.bitwarden.desktop"},
         {}},
    };
    return list;
}

std::optional<AppKind> kindWithId(const QString& id) {
    for (const AppKind& kind : kinds()) {
        if (kind.id == id) return kind;
    }
    return std::nullopt;
}

bool match(const QString& host, const QString& site) {
    return host == site || host.endsWith(QLatin1Char('.') + site);
}

std::optional<AppKind> kindOf(const QString& app) {
    for (const AppKind& kind : kinds()) {
        if (kind.apps.contains(app)) return kind;
    }
    if (const auto id = linuxKindId(app)) return kindWithId(*id);
    return std::nullopt;
}

std::optional<AppKind> kindOfSite(const QString& host) {
    for (const AppKind& kind : kinds()) {
        for (const QString& site : kind.sites) {
            if (match(host, site)) return kind;
        }
    }
    return std::nullopt;
}

bool isBrowser(const QString& id) {
    return glimmo::browsers().contains(id) || linuxKindId(id) == QStringLiteral("browsers");
}

bool isReplyApp(const QString& id) {
    return glimmo::replyApps().contains(id) || linuxDraftsReplies(id);
}

}  // namespace rules
