#pragma once

#include "testing.h"

#include <QTcpServer>

class QTcpSocket;

/// A small HTTP server on a free port of loopback that answers in the test's own thread, so it works while the test (or
/// what it tests) processes events. It can do to a download what a bad line or a bad server does: cut it, stall it, lie
/// about its length. A path that was not announced is answered with 404 and a short page.
class HttpServer : public QObject
{
    Q_OBJECT

public:
    HttpServer();

    /// "http://127.0.0.1:port", without a closing slash.
    QString address() const { return "http://127.0.0.1:%1"_s.arg(m_port); }
    QString url(const QString &path) const { return address() + path; }

    /// The whole file with its true length.
    void serve(const QString &path, const QByteArray &content) {
        answer(path, {kOk, content, content.size(), End::Close});
    }
    /// The first @p sent bytes of the file under the length of the whole, then the connection is closed.
    void serveCut(const QString &path, const QByteArray &content, int sent) {
        answer(path, {kOk, content.left(sent), content.size(), End::Close});
    }
    /// The first @p sent bytes under the length of the whole, in two parts, then silence while the connection stays
    /// open.
    void serveStalled(const QString &path, const QByteArray &content, int sent) {
        answer(path, {kOk, content.left(sent), content.size(), End::Silence});
    }
    /// The whole file without a word about its length.
    void serveWithoutLength(const QString &path, const QByteArray &content) {
        answer(path, {kOk, content, kNoLength, End::Close});
    }
    /// The whole file under another length than its own, then the connection is closed.
    void serveUnderLength(const QString &path, const QByteArray &content, qint64 length) {
        answer(path, {kOk, content, length, End::Close});
    }
    /// The whole file in as many answers as it takes: each brings at most @p bytesAnAnswer more and is then cut. What
    /// is asked for is given from where it is asked for on, while @p mark, its "ETag", is the one that is asked about;
    /// with an empty mark there are no ranges.
    void serveInParts(const QString &path, const QByteArray &content, int bytesAnAnswer, const QByteArray &mark) {
        Answer parts = {kOk, content, content.size(), End::Close};
        parts.bytesAnAnswer = bytesAnAnswer;
        parts.mark = mark;
        answer(path, parts);
    }
    /// Sends whoever asks on to another path or URL.
    void redirect(const QString &path, const QByteArray &to) {
        Answer on = {kFound, QByteArray(), 0, End::Close};
        on.location = to;
        answer(path, on);
    }
    /// The "Range" of each request, in order; empty where there was none.
    const QList<QByteArray> &ranges() const { return m_ranges; }
    /// An error status with a page of its own.
    void serveError(const QString &path, int status, const QByteArray &page) {
        answer(path, {status, page, page.size(), End::Close});
    }
    /// Stops listening: from now on every connection is refused. The address stays the same.
    void refuse() { m_server.close(); }

    /// The paths that were asked for with GET, in order.
    const QStringList &requests() const { return m_requests; }

signals:
    /// The answer to @p path is on its way.
    void answered(const QString &path);

private:
    enum class End
    {
        Close,
        Silence
    };
    struct Answer
    {
        int status;
        QByteArray content;
        qint64 claimed;
        End end;
        int bytesAnAnswer = 0; ///< 0: all of them
        QByteArray mark = {};
        QByteArray location = {};
    };

    static constexpr qint64 kNoLength = -1;
    static constexpr int kOk = 200;
    static constexpr int kFound = 302;

    void answer(const QString &path, const Answer &with) { m_answers.insert(path, with); }
    void accept();
    void read(QTcpSocket *socket);
    void reply(QTcpSocket *socket, const QString &path, const QByteArray &request);
    static void replyWithPart(QTcpSocket *socket, const Answer &answer, const QByteArray &request);

    QTcpServer m_server;
    quint16 m_port = 0;
    QHash<QString, Answer> m_answers;
    QStringList m_requests;
    QList<QByteArray> m_ranges;
};
