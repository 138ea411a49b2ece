#pragma once

#include "testing.h"

/// Speaks a language of the program ("en") while it lives. Needs the resources.
class Language
{
public:
    explicit Language(const QString &code) {
        if (!m_translator.load(":/language/lang_%1.qm"_s.arg(code)))
            qFatal("no translation file for this language");
        QCoreApplication::installTranslator(&m_translator);
        QCoreApplication::processEvents();
    }
    ~Language() {
        QCoreApplication::removeTranslator(&m_translator);
        QCoreApplication::processEvents();
    }
    Language(const Language &) = delete;
    Language &operator=(const Language &) = delete;

private:
    QTranslator m_translator;
};

/// While it lives, every text of one context (or, without one, of all) reads "[…]" around its source: what does not
/// change is not translated.
class MarkedTexts : public QTranslator
{
public:
    explicit MarkedTexts(const char *context = "") : m_context(context) { QCoreApplication::installTranslator(this); }
    ~MarkedTexts() override { QCoreApplication::removeTranslator(this); }
    MarkedTexts(const MarkedTexts &) = delete;
    MarkedTexts &operator=(const MarkedTexts &) = delete;

    bool isEmpty() const override { return false; }
    QString translate(const char *context, const char *source, const char *, int) const override {
        if (!m_context.isEmpty() && m_context != context)
            return QString();
        return QLatin1Char('[') + QString::fromUtf8(source) + QLatin1Char(']');
    }

private:
    QByteArray m_context;
};
