#pragma once

#include <QString>

namespace hipico {

// Makes the named printer the default printer of this user (CUPS). Returns
// false when the printing system refuses it.
bool ImpresoraPredeterminada(const QString& nombre);

}  // namespace hipico
