#include "httpserver.h"

#include <QTcpSocket>
#include <QTest>
#include <QTimer>
#include <QUrl>

namespace {
constexpr qint64 kNoLength = -1;
constexpr int kOk = 200;
constexpr int kNotFound = 404;
constexpr int kPauseMs = 200;
} // namespace

HttpServer::HttpServer()
{
    connect(&m_server, &QTcpServer::newConnection, this, &HttpServer::accept);
    if (!m_server.listen(QHostAddress::LocalHost))
        QTest::qFail("Cannot listen on loopback", __FILE__, __LINE__);
    m_port = m_server.serverPort();
}

QString HttpServer::address() const
{
    return QStringLiteral("http://127.0.0.1:%1").arg(m_port);
}

void HttpServer::serve(const QString &path, const QByteArray &content)
{
    m_answers.insert(path, {kOk, content, content.size(), End::Close});
}

void HttpServer::serveCut(const QString &path, const QByteArray &content, int sent)
{
    m_answers.insert(path, {kOk, content.left(sent), content.size(), End::Close});
}

void HttpServer::serveStalled(const QString &path, const QByteArray &content, int sent)
{
    m_answers.insert(path, {kOk, content.left(sent), content.size(), End::Silence});
}

void HttpServer::serveWithoutLength(const QString &path, const QByteArray &content)
{
    m_answers.insert(path, {kOk, content, kNoLength, End::Close});
}

void HttpServer::serveUnderLength(const QString &path, const QByteArray &content, qint64 length)
{
    m_answers.insert(path, {kOk, content, length, End::Close});
}

void HttpServer::serveError(const QString &path, int status, const QByteArray &page)
{
    m_answers.insert(path, {status, page, page.size(), End::Close});
}

void HttpServer::refuse()
{
    m_server.close();
}

void HttpServer::accept()
{
    while (QTcpSocket *socket = m_server.nextPendingConnection()) {
        connect(socket, &QTcpSocket::readyRead, this, [this, socket] { read(socket); });
        connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
    }
}

void HttpServer::read(QTcpSocket *socket)
{
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

void HttpServer::reply(QTcpSocket *socket, const QString &path)
{
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
