#pragma once
// The setup and apps windows: each built on first use from its factory, brought back to the
// front while open, and built anew after it closed. The setup window also floats above other
// windows until the user activates it, for 20 seconds at most.

#include <QObject>
#include <QPointer>
#include <QWidget>
#include <functional>

namespace shell {

class Windows : public QObject {
    Q_OBJECT
public:
    // Builds a new top-level window (the caller wires its model); null while none exists.
    using Factory = std::function<QWidget*()>;

    explicit Windows(QObject* parent = nullptr);

    void setSetupFactory(Factory factory) { setupFactory_ = std::move(factory); }
    void setAppsFactory(Factory factory) { appsFactory_ = std::move(factory); }

    void showSetup();
    void showApps();

    // The open windows; null when closed.
    QWidget* setupWindow() const { return setup_; }
    QWidget* appsWindow() const { return apps_; }

    // Activates the window and puts it in front.
    static void bringToFront(QWidget* window);
    // Keeps the window above the others until it is activated, 20 seconds at most.
    static void raise(QWidget* window);

private:
    // The window of the factory, opened and centred; null (and a log line) when there is none.
    QWidget* open(const Factory& factory, const QString& what);

    Factory setupFactory_;
    Factory appsFactory_;
    QPointer<QWidget> setup_;
    QPointer<QWidget> apps_;
};

}  // namespace shell
