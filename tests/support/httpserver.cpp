#include "httpserver.h"

#include <QTcpSocket>

namespace {
constexpr int kNotFound = 404;
constexpr int kPauseMs = 200;
} // namespace

HttpServer::HttpServer() {
    connect(&m_server, &QTcpServer::newConnection, this, &HttpServer::accept);
    if (!m_server.listen(QHostAddress::LocalHost))
        failTest("Cannot listen on loopback"_s);
    m_port = m_server.serverPort();
}

void HttpServer::accept() {
    while (QTcpSocket *socket = m_server.nextPendingConnection()) {
        connect(socket, &QTcpSocket::readyRead, this, [this, socket] { read(socket); });
        connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
    }
}

void HttpServer::read(QTcpSocket *socket) {
    // The head ends with an empty line; until it is whole it stays in the socket's buffer.
    if (!socket->peek(socket->bytesAvailable()).contains("\r\n\r\n"))
        return;
    const QList<QByteArray> words = socket->readAll().split(' ');
    if (words.size() < 2 || words.first() != "GET") {
        socket->disconnectFromHost();
        return;
    }
    const QString path = QUrl::fromEncoded(words.at(1)).path();
    m_requests.append(path);
    reply(socket, path);
}

void HttpServer::reply(QTcpSocket *socket, const QString &path) {
    const QByteArray page = "<html>404</html>";
    const Answer answer = m_answers.value(path, {kNotFound, page, page.size(), End::Close});
    QByteArray head = "HTTP/1.1 " + QByteArray::number(answer.status) + " Answer\r\nConnection: close\r\n";
    if (answer.claimed != kNoLength)
        head += "Content-Length: " + QByteArray::number(answer.claimed) + "\r\n";
    socket->write(head + "\r\n");
    if (answer.end == End::Silence) {
        // A pause in the middle: a client that reports its progress in intervals gets to do so before the silence.
        const int half = answer.content.size() / 2;
        socket->write(answer.content.left(half));
        QTimer::singleShot(kPauseMs, socket, [socket, answer, half] { socket->write(answer.content.mid(half)); });
        emit answered(path);
        return;
    }
    socket->write(answer.content);
    emit answered(path);
    // The socket sends what it still holds before it closes.
    socket->disconnectFromHost();
}
