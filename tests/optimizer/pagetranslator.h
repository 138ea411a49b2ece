#pragma once

#include <QCoreApplication>
#include <QString>
#include <QTranslator>

/// While it lives, every text of one context reads "[…]" around its source: what does not change is not translated.
class PageTranslator : public QTranslator
{
public:
    explicit PageTranslator(const char *context) : m_context(QString::fromLatin1(context))
    {
        QCoreApplication::installTranslator(this);
    }
    ~PageTranslator() override { QCoreApplication::removeTranslator(this); }
    PageTranslator(const PageTranslator &) = delete;
    PageTranslator &operator=(const PageTranslator &) = delete;

    bool isEmpty() const override { return false; }
    QString translate(const char *context, const char *source, const char *, int) const override
    {
        if (m_context != QString::fromLatin1(context))
            return QString();
        return QLatin1Char('[') + QString::fromUtf8(source) + QLatin1Char(']');
    }

private:
    QString m_context;
};
