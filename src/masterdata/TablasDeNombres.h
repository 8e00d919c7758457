#pragma once

#include "masterdata/Maestro.h"

namespace hipico {

// A table of names with a generated key that client movements point to (the
// banks, the operation types), described for the master-data pattern.
struct TablaDeNombres {
    const char* ventana;     // the window's name
    const char* titulo;      // its caption
    const char* tabla;
    const char* clave;       // the generated key
    const char* nombre;      // the name column
    const char* etiqueta;    // the name's caption
    int largo;               // the name's width
    const char* movimiento;  // the column of jugadas_clientes that points to a row
};

inline constexpr TablaDeNombres kBancos{"Form_Bancos", "BANCOS", "bancos", "id_banco", "banco", "BANCO", 100,
                                        "id_banco"};
inline constexpr TablaDeNombres kTiposOperacion{"Form_TiposOperacion", "TIPOS DE OPERACION", "tipo_deposito",
                                                "id_tipo_deposito", "tipo", "TIPO DE OPERACION", 45,
                                                "tipo_operacion"};

// Logic of such a window: a name must be given and be the only one of its
// kind (in any case), and a row the ledger uses is not deleted (the client's
// statement would lose those movements).
class NombresMaestro : public Maestro {
public:
    NombresMaestro(Context& ctx, const TablaDeNombres& tabla);
    static DescripcionMaestro describir(const TablaDeNombres& tabla);

protected:
    Recordset consultaListado(Db& db, const QString& filtro) override;
    Recordset consultaBusqueda(Db& db, const QString& texto) override;
    std::optional<Negativa> reglas(Db& db, const ValoresCampos& valores, bool nuevo) override;
    std::optional<Negativa> reglasEliminar(Db& db) override;

private:
    TablaDeNombres t_;
};

inline const QString kNombreRepetido = QStringLiteral("  Ya exíste otro registro con este nombre");
inline const QString kNombreEnUso =
    QStringLiteral("NO SE PUEDE ELIMINAR: HAY MOVIMIENTOS DE CLIENTES QUE LO USAN");

}  // namespace hipico
