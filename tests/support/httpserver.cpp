#include "httpserver.h"

#include <QTcpSocket>

namespace {
constexpr int kNotFound = 404;
constexpr int kPauseMs = 200;

/// What a request says under this name.
QByteArray headerOf(const QByteArray &request, const QByteArray &name) {
    const int start = request.indexOf("\r\n" + name + ": ");
    const int value = start + name.size() + 4;
    return start < 0 ? QByteArray() : request.mid(value, request.indexOf("\r\n", value) - value);
}
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
    const QByteArray request = socket->readAll();
    const QList<QByteArray> words = request.split(' ');
    if (words.size() < 2 || words.first() != "GET") {
        socket->disconnectFromHost();
        return;
    }
    const QString path = QUrl::fromEncoded(words.at(1)).path();
    m_requests.append(path);
    m_ranges.append(headerOf(request, "Range"));
    reply(socket, path, request);
}

void HttpServer::replyWithPart(QTcpSocket *socket, const Answer &answer, const QByteArray &request) {
    const bool knows = !answer.mark.isEmpty() && headerOf(request, "If-Range") == answer.mark;
    const QByteArray range = headerOf(request, "Range");
    const int from = knows ? range.mid(range.indexOf('=') + 1).chopped(1).toInt() : 0;
    const int size = answer.content.size();
    QByteArray head = from > 0 ? "HTTP/1.1 206 Part\r\n" : "HTTP/1.1 200 Answer\r\n";
    head += "Connection: close\r\nContent-Length: " + QByteArray::number(size - from) + "\r\n";
    if (!answer.mark.isEmpty())
        head += "ETag: " + answer.mark + "\r\n";
    if (from > 0)
        head += "Content-Range: bytes " + QByteArray::number(from) + '-' + QByteArray::number(size - 1) + '/' +
                QByteArray::number(size) + "\r\n";
    socket->write(head + "\r\n" + answer.content.mid(from, answer.bytesAnAnswer));
    socket->disconnectFromHost();
}

void HttpServer::reply(QTcpSocket *socket, const QString &path, const QByteArray &request) {
    const QByteArray page = "<html>404</html>";
    const Answer answer = m_answers.value(path, {kNotFound, page, page.size(), End::Close});
    if (answer.bytesAnAnswer > 0) {
        replyWithPart(socket, answer, request);
        emit answered(path);
        return;
    }
    QByteArray head = "HTTP/1.1 " + QByteArray::number(answer.status) + " Answer\r\nConnection: close\r\n";
    if (answer.claimed != kNoLength)
        head += "Content-Length: " + QByteArray::number(answer.claimed) + "\r\n";
    if (!answer.location.isEmpty())
        head += "Location: " + answer.location + "\r\n";
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
