#pragma once
// platform::TopBarMenu through the compositor companion: the icon goes over as an image file
// in the user's runtime folder, the items as JSON.

#include <QObject>
#include <QString>

#include "platform/TopBarMenu.h"

namespace linuxdesk {

class Companion;

class CompanionMenu : public QObject, public platform::TopBarMenu {
public:
    explicit CompanionMenu(Companion& companion);
    ~CompanionMenu() override;

    bool available() const override;
    void show(const QImage& icon, const std::vector<platform::MenuItem>& items) override;
    void hide() override;
    void onOpening(std::function<void()> handler) override { opening_ = std::move(handler); }
    void onChosen(std::function<void(int)> handler) override { chosen_ = std::move(handler); }
    void onAvailable(std::function<void(bool)> handler) override {
        available_ = std::move(handler);
    }

    // The rows as the companion reads them.
    static QString rowsJson(const std::vector<platform::MenuItem>& items);

private:
    Companion& companion_;
    std::function<void()> opening_;
    std::function<void(int)> chosen_;
    std::function<void(bool)> available_;
    QString iconPath_;
    qint64 iconKey_ = 0;
    bool shown_ = false;
};

}  // namespace linuxdesk
