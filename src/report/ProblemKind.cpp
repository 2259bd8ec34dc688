#include "ProblemKind.h"

namespace zentoria {

QString kindCode(ProblemKind kind) {
    return QStringLiteral("ID3v") + QString::number(kindNumber(kind));
}

} // namespace zentoria
