#pragma once

#include <QString>
#include <QStringList>
#include <optional>

namespace hipico {

class Context;

// The tracks as the race screens list them: the names of rsHipodromos
// (reopened), in the table's order; with soloActivos only those whose
// estatus is 1.
QStringList nombresHipodromos(Context& ctx, bool soloActivos);

// The id of the track whose name equals the text exactly, walking
// rsHipodromos from its first row (reopened first); nullopt when none does.
std::optional<int> idHipodromo(Context& ctx, const QString& nombre);

// A number typed in a race or horse number box: an empty box counts as 0;
// nullopt when the text is not a whole number that fits the column.
std::optional<int> numeroCaja(const QString& texto);

}  // namespace hipico
