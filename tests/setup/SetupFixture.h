#pragma once
// A Setup on the scripted desktop in a home of its own, with claude played by a shell script.

#include <gtest/gtest.h>

#include <QFile>
#include <memory>
#include <vector>

#include "TempHome.h"
#include "main/Paths.h"
#include "platform/Defaults.h"
#include "platform/fake/Ax.h"
#include "platform/fake/Clock.h"
#include "platform/fake/Workspace.h"
#include "setup/Setup.h"

class SetupFixture : public ::testing::Test {
protected:
    // Writes an executable script under the home folder; returns its path.
    QString script(const QString& relative, const QByteArray& body) {
        const QString path = home.write(relative, "#!/bin/sh\n" + body);
        QFile::setPermissions(path, QFile::permissions(path) | QFile::ExeOwner);
        return path;
    }

    // Makes claude the given script, through the support folder's claude-path file.
    void useClaude(const QByteArray& body) {
        const QString path = script("bin/claude", body);
        home.write(".local/share/Glimmo/claude-path", path.toUtf8() + '\n');
    }

    std::shared_ptr<setup::Setup> make(const QString& installCommand = "exit 1") {
        auto s = setup::Setup::create({defaults, ax, workspace, clock}, installCommand);
        s->onProgress = [this] { ++progress; };
        s->onSaved = [this] { ++saved; };
        made.push_back(s);
        return s;
    }

    // Work still running (a verification after a sign-in, say) reports to this fixture: it
    // must end before the next test.
    void TearDown() override {
        EXPECT_TRUE(testsupport::waitUntil([&] {
            for (const auto& weak : made)
                if (!weak.expired()) return false;
            return true;
        }));
    }

    QString log() const { return QString::fromUtf8(home.read(".local/share/Glimmo/log.txt")); }

    testsupport::TempHome home;
    platform::MemoryDefaults defaults;
    fake::Clock clock;
    fake::Workspace workspace;
    fake::Ax ax{workspace, clock};
    std::vector<std::weak_ptr<setup::Setup>> made;
    int progress = 0;
    int saved = 0;
};
