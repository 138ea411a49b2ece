#pragma once

#include "boxanswerer.h"
#include "testing.h"

/// A way to answer the box of a title, for a table of cases.
using Answer = std::function<void(BoxAnswerer &, const QString &title)>;
Q_DECLARE_METATYPE(Answer)

inline Answer pressing(const QString &button) {
    return [button](BoxAnswerer &boxes, const QString &title) { boxes.answer(title, button); };
}

inline Answer striking(Qt::Key key) {
    return [key](BoxAnswerer &boxes, const QString &title) { boxes.answerByKey(title, key); };
}

inline Answer closing() {
    return &BoxAnswerer::answerByClosing;
}
