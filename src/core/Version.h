#pragma once

#include <QString>

namespace hipico {

// The program's own version: shown at sign-in, recorded with each login and
// compared with the newest version announced by the central settings.
inline const QString kVersionTexto = QStringLiteral("4.0.04");
constexpr int kVersionNumero = 40004;
inline const QString kVersionEtiqueta = QStringLiteral("...::: 4.0.04 :::...");

}  // namespace hipico
