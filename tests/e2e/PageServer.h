#pragma once
// A web server inside the test process, for browsers on the virtual desktop.

#include <QFile>
#include <QSslCertificate>
#include <QSslConfiguration>
#include <QSslKey>
#include <QSslServer>
#include <QSslSocket>
#include <QTcpServer>
#include <QTcpSocket>

namespace desktop {

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

}  // namespace desktop
