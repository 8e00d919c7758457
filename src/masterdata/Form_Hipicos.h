#pragma once

#include "masterdata/Hipicos.h"
#include "masterdata/VentanaMaestra.h"

namespace hipico {

// The betting-centres window: the groups and their centres on the
// master-data pattern, plus the transfer to the betting-centre server.
class Form_Hipicos : public VentanaMaestra {
    Q_OBJECT
public:
    explicit Form_Hipicos(Context& ctx, QWidget* parent = nullptr);
    Hipicos& logica() { return static_cast<Hipicos&>(logicaBase()); }
};

}  // namespace hipico
