#pragma once

#include "masterdata/Usuarios.h"
#include "masterdata/VentanaMaestra.h"

namespace hipico {

// The users window: the users on the master-data pattern, plus, for the
// administrator levels, the commands on every user of the centre chosen in
// the listing's filter.
class Form_Usuarios : public VentanaMaestra {
    Q_OBJECT
public:
    explicit Form_Usuarios(Context& ctx, QWidget* parent = nullptr);
    Usuarios& logica() { return static_cast<Usuarios&>(logicaBase()); }
};

}  // namespace hipico
