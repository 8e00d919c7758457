#pragma once

#include "masterdata/Maestro.h"

namespace hipico {

// Logic of the betting-centres window (Form_Hipicos): the groups of
// `grupos` with their centre, contact and company data, games, shares and
// auction settings, kept by the master-data pattern. Deleting a group also
// deletes its users and the rules and limits of its whole centre, in one
// transaction. The transfer copies every group to the betting-centre server.
class Hipicos : public Maestro {
public:
    explicit Hipicos(Context& ctx);

    static const DescripcionMaestro& descripcionHipicos();

    QStringList opciones(const QString& columna) override;
    // "TODOS" and the names of the subgroups.
    QStringList filtros() override;

    // Copies every group of the system named by the setting `conexion` (the
    // central server itself when it is empty) into `centroshipicos` of the
    // betting-centre server, after a confirmation and the security key.
    bool transferir();

protected:
    Recordset consultaListado(Db& db, const QString& filtro) override;
    Recordset consultaBusqueda(Db& db, const QString& texto) override;
    ValoresCampos valoresNuevos() override;
    void completar(ValoresCampos& valores) override;
    std::optional<Negativa> reglas(Db& db, const ValoresCampos& valores, bool nuevo) override;
    std::optional<Negativa> reglasEliminar(Db& db) override;
    void borrar(Db& db, const QString& grupo) override;
};

inline const QString kSinSubgrupo = QStringLiteral("N/A");
inline const QString kGrupoNoExiste = QStringLiteral("La grupo no existe");
inline const QString kGrupoYaExiste = QStringLiteral("  Ya exíste otro grupo con estas iniciales");
inline const QString kGrupoPropio = QStringLiteral("NO PUEDE ELIMINAR EL GRUPO DE SU PROPIO USUARIO");
inline const QString kTransferir = QStringLiteral(" ¿Esta seguro de querer transferir los centros hípicos al otro sistema?");
inline const QString kClaveSeguridad = QStringLiteral("Ingrese la clave de seguridad ");
inline const QString kClaveSeguridadErrada = QStringLiteral("LA CLAVE DE SEGURIDAD NO ES CORRECTA");
inline const QString kTituloTransferencia = QStringLiteral("TRANSFERENCIA DE CENTROS HIPICOS");
inline const QString kTransferidos = QStringLiteral("Hipicos Transferidos con exito");

}  // namespace hipico
