#pragma once

#include "testing.h"

/// The signals or the slots that a class itself declares with this access, in their order: "finished()".
template <typename Class>
QStringList methodsOf(QMetaMethod::MethodType type, QMetaMethod::Access access = QMetaMethod::Public) {
    QStringList found;
    const QMetaObject &meta = Class::staticMetaObject;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        const QMetaMethod method = meta.method(i);
        if (method.methodType() == type && method.access() == access)
            found.append(QString::fromLatin1(method.methodSignature()));
    }
    return found;
}
