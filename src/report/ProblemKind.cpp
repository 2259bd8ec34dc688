#include "ProblemKind.h"

namespace zentoria {

QString kindCode(ProblemKind kind) {
    return QStringLiteral("ID3v") + QString::number(kindNumber(kind));
}

QString kindCaption(ProblemKind kind) {
    switch (kind) {
    case ProblemKind::ID3v1:
        return QStringLiteral("ID3v1 not found");
    case ProblemKind::ID3v2:
        return QStringLiteral("ID3v2 not found");
    case ProblemKind::ID3v0:
        return QStringLiteral("No ID3 tags");
    }
    return {};
}

std::optional<ProblemKind> problemKindNamed(QStringView code) {
    for (ProblemKind kind : {ProblemKind::ID3v1, ProblemKind::ID3v2, ProblemKind::ID3v0}) {
        if (code.compare(kindCode(kind), Qt::CaseInsensitive) == 0) {
            return kind;
        }
    }
    return std::nullopt;
}

QString ProblemKindText(const QString& key) {
    const QStringView code = QStringView(key).left(5);
    if (code == u"ID3v1") {
        return QStringLiteral("ID3v1 not found");
    }
    if (code == u"ID3v2") {
        return QStringLiteral("ID3v2 Not found");
    }
    if (code == u"ID3v0") {
        return QStringLiteral("No ID3 tags");
    }
    return {};
}

} // namespace zentoria
