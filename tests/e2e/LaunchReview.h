#pragma once
// The message the mail tests answer, as saved from a mail client, and the drafts the claude
// stand-in gives for it.

#include <QByteArray>
#include <QStringList>

namespace launchreview {

inline const QByteArray kMessage = R"(From: Ana Ruiz <ana@example.com>
To: Ben Okafor <ben@example.com>
Subject: Launch review
Date: Mon, 23 Nov 2026 09:12:00 +0000
Message-ID: <launch-review@example.com>
MIME-Version: 1.0
Content-Type: text/plain; charset=utf-8

Hi Ben,

Can we move the launch review to Thursday? The deck is not ready yet.
Could you send it tonight so I can read it first?

Ana
)";

inline const QStringList kDrafts{
    QStringLiteral("Sure, I'll send the deck by 9 tonight."),
    QStringLiteral("I'll send it first thing tomorrow."),
    QStringLiteral("Yes, Thursday works, sending it within the hour."),
};

}  // namespace launchreview
