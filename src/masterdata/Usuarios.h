#pragma once

#include "masterdata/Maestro.h"

namespace hipico {

// Logic of the users window (Form_Usuarios): who may sign in, with which
// level, in which group and whether the account is active, kept by the
// master-data pattern; passwords are stored in the form the configuration
// asks for. Listings depend on the session's level and never show the
// hidden administrators to anyone but themselves. An administrator can also
// deactivate, activate or release the machines of every user of a centre.
class Usuarios : public Maestro {
public:
    explicit Usuarios(Context& ctx);

    static const DescripcionMaestro& descripcionUsuarios();
    // The levels the window offers.
    static const QStringList& nivelesOfrecidos();

    // Groups: every group for the administrator levels, the own group for the others.
    QStringList opciones(const QString& columna) override;
    // "TODOS" and the centres the session may list.
    QStringList filtros() override;

    // The centre commands (administrator levels only), each after a confirmation.
    bool desactivarCentro(const QString& centro);
    bool activarCentro(const QString& centro);
    bool liberarEquipos(const QString& centro);
    // Whether the session may use them.
    bool manejaCentros() const;

protected:
    Recordset consultaListado(Db& db, const QString& filtro) override;
    Recordset consultaBusqueda(Db& db, const QString& grupo) override;
    ValoresCampos valoresNuevos() override;
    std::optional<Negativa> reglas(Db& db, const ValoresCampos& valores, bool nuevo) override;
    std::optional<Negativa> reglasEliminar(Db& db) override;
    QString insertar(Db& db, const FilaMaestra& fila) override;
    void actualizar(Db& db, const FilaMaestra& fila) override;

private:
    bool cambiarCentro(const QString& centro, const char* sql, const QString& titulo, const QString& pregunta);
};

// The hidden level's short spelling, which listings also leave out.
inline const QString kAdministradorO = QStringLiteral("Administrador O");
inline const QString kUsuarioYaExiste = QStringLiteral("  Ya exíste en otro usuario con este grupo");
inline const QString kTituloDenegada = QStringLiteral("PETICION DENEGADA");
inline const QString kNivelDenegado = QStringLiteral(" Este Nivel no se puede crear");
inline const QString kUsuarioPropio = QStringLiteral("NO PUEDE ELIMINAR SU PROPIO USUARIO");
inline const QString kTituloLimpieza = QStringLiteral("Limpieza de Usuarios");
inline const QString kTituloUsuarios = QStringLiteral("USUARIOS");
inline const QString kSeleccioneCentro = QStringLiteral("DEBE SELECCIONAR UN CENTRO HIPICO");

}  // namespace hipico
