#pragma once
// Chromium on the virtual desktop, showing pages served from the test process itself.

#include <QFile>
#include <QProcess>
#include <QSslCertificate>
#include <QSslConfiguration>
#include <QSslKey>
#include <QSslServer>
#include <QSslSocket>
#include <QStandardPaths>
#include <QTcpServer>
#include <QTcpSocket>

#include "TempHome.h"

namespace desktop {

inline QString chromiumProgram() {
    for (const char* name : {"chromium", "chromium-browser"}) {
        const QString path = QStandardPaths::findExecutable(QLatin1String(name));
        if (!path.isEmpty()) return path;
    }
    return {};
}

// Answers every request with one page (and the favicon with nothing). With a certificate and
// its key (PEM files) it speaks HTTPS, for hosts the browser only ever reaches that way.
class PageServer {
public:
    explicit PageServer(QByteArray page, const QString& certificate = {}, const QString& key = {})
        : page_(std::move(page)) {
        QTcpServer* server = &plain_;
        if (!certificate.isEmpty()) {
            QFile c(certificate), k(key);
            c.open(QIODevice::ReadOnly);
            k.open(QIODevice::ReadOnly);
            QSslConfiguration tls = QSslConfiguration::defaultConfiguration();
            tls.setLocalCertificate(QSslCertificate(c.readAll()));
            tls.setPrivateKey(QSslKey(k.readAll(), QSsl::Rsa));
            tls.setPeerVerifyMode(QSslSocket::VerifyNone);
            secure_.setSslConfiguration(tls);
            server = &secure_;
            https_ = true;
        }
        server->listen(QHostAddress::LocalHost);
        port_ = server->serverPort();
        QObject::connect(server, &QTcpServer::pendingConnectionAvailable, [this, server] {
            while (QTcpSocket* s = server->nextPendingConnection()) serve(s);
        });
    }
    // The page's address under host (which must lead to 127.0.0.1), at path.
    QString url(const QString& host, const QString& path = QStringLiteral("/")) const {
        return QStringLiteral("%1://%2:%3%4")
            .arg(https_ ? "https" : "http", host)
            .arg(port_)
            .arg(path);
    }

private:
    void serve(QTcpSocket* s) {
        auto reply = [this, s] {
            const QByteArray request = s->readAll();
            if (request.isEmpty()) return;
            const bool page = !request.startsWith("GET /favicon");
            const QByteArray body = page ? page_ : QByteArray();
            s->write(QByteArray(page ? "HTTP/1.0 200 OK\r\n" : "HTTP/1.0 404 No\r\n") +
                     "Content-Type: text/html; charset=utf-8\r\nContent-Length: " +
                     QByteArray::number(body.size()) + "\r\n\r\n" + body);
            s->disconnectFromHost();
        };
        QObject::connect(s, &QTcpSocket::readyRead, s, reply);
        QObject::connect(s, &QTcpSocket::disconnected, s, &QObject::deleteLater);
        if (s->bytesAvailable() > 0) reply();
    }

    QByteArray page_;
    QTcpServer plain_;
    QSslServer secure_;
    quint16 port_ = 0;
    bool https_ = false;
};

// A certificate for host and its key, made with openssl in dir; false when that fails.
inline bool makeCertificate(const QString& dir, const QString& host) {
    QProcess openssl;
    openssl.setStandardOutputFile(QProcess::nullDevice());
    openssl.setStandardErrorFile(QProcess::nullDevice());
    openssl.start("openssl", {"req", "-x509", "-newkey", "rsa:2048", "-nodes", "-days", "2",
                              "-subj", "/CN=" + host, "-addext", "subjectAltName=DNS:" + host,
                              "-keyout", dir + "/key.pem", "-out", dir + "/cert.pem"});
    return openssl.waitForFinished(60000) && openssl.exitStatus() == QProcess::NormalExit &&
           openssl.exitCode() == 0;
}

// Chromium with its accessibility tree on, a fresh profile and nothing that reaches the network.
// extra: further switches (a host mapping, an application window, a window class); url may be
// empty when one of them names the page.
class Chromium {
public:
    Chromium(const QString& program, const QString& profile, const QString& url,
             const QStringList& extra = {}) {
        process_.setStandardOutputFile(QProcess::nullDevice());
        process_.setStandardErrorFile(profile + QStringLiteral(".log"));
        // Root has no sandbox to enter; the page is local and trusted.
        process_.start(
            program,
            QStringList{"--no-sandbox", "--force-renderer-accessibility",
                        "--user-data-dir=" + profile, "--disable-background-networking",
                        "--disable-component-update", "--disable-sync", "--no-first-run",
                        "--no-default-browser-check", "--disable-gpu", "--password-store=basic",
                        "--disable-features=Translate", "--window-size=1000,700"} +
                extra + (url.isEmpty() ? QStringList() : QStringList{url}));
    }
    ~Chromium() {
        process_.terminate();
        if (!process_.waitForFinished(5000)) process_.kill();
        process_.waitForFinished(2000);
    }
    bool started() { return process_.waitForStarted(5000); }
    qint64 pid() const { return process_.processId(); }

private:
    QProcess process_;
};

}  // namespace desktop
