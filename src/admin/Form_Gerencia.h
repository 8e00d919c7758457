#pragma once

#include "admin/Form_Admin_Win.h"

namespace hipico {

// The centre manager's window: the winners desk on the manager's own group.
class Form_Geren_Ganadores : public Form_Admin_Win {
public:
    explicit Form_Geren_Ganadores(Context& ctx, QWidget* parent = nullptr)
        : Form_Admin_Win(ctx, PerfilGanadores::GerenciaGrupo, QStringLiteral("Form_Geren_Ganadores"), parent) {}
};

// The subgroup manager's window: the winners desk on the groups of the
// manager's subgroup.
class Form_Gerencia_Grupos : public Form_Admin_Win {
public:
    explicit Form_Gerencia_Grupos(Context& ctx, QWidget* parent = nullptr)
        : Form_Admin_Win(ctx, PerfilGanadores::GerenciaSubgrupo, QStringLiteral("Form_Gerencia_Grupos"), parent) {}
};

}  // namespace hipico
