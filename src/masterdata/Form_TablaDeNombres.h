#pragma once

#include "masterdata/TablasDeNombres.h"
#include "masterdata/VentanaMaestra.h"

namespace hipico {

// The banks and the operation types of the client ledger: nothing but their
// description on the master-data pattern.
class Form_TablaDeNombres : public VentanaMaestra {
    Q_OBJECT
public:
    Form_TablaDeNombres(Context& ctx, const TablaDeNombres& tabla, QWidget* parent = nullptr)
        : VentanaMaestra(ctx, parent, std::make_unique<NombresMaestro>(ctx, tabla)) {}
};

}  // namespace hipico
