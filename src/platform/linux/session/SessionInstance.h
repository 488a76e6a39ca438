#pragma once
// The single instance on the session bus: the first process owns the name io.glimmo.Glimmo
// and answers org.freedesktop.Application.Activate there; a later start calls it.

#include <QObject>
#include <QVariantMap>
#include <functional>

#include "platform/SingleInstance.h"

namespace linuxdesk {

class SessionInstance : public QObject, public platform::SingleInstance {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")
public:
    static const char* const serviceName;
    static const char* const objectPath;

    explicit SessionInstance(QObject* parent = nullptr);
    ~SessionInstance() override;

    Claim claim(std::function<void()> onReopen) override;
    bool reopenRunning() override;
    bool quitRunning() override;

public slots:
    // org.freedesktop.Application, as desktop launchers call it.
    void Activate(const QVariantMap& platformData);
    void Open(const QStringList& uris, const QVariantMap& platformData);
    void ActivateAction(const QString& name, const QVariantList& parameter,
                        const QVariantMap& platformData);

private:
    std::function<void()> onReopen_;
    bool owner_ = false;
};

}  // namespace linuxdesk
