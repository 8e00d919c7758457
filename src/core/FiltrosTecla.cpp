#include "core/FiltrosTecla.h"

#include "core/Cipher.h"

namespace hipico {

namespace {

constexpr int kBackspace = 8;
constexpr int kEnter = 13;

int dejarPasar(int codigo, const char* permitidos) {
    if (codigo == kBackspace || codigo == kEnter) return codigo;
    for (const char* p = permitidos; *p; ++p)
        if (codigo == static_cast<unsigned char>(*p)) return codigo;
    return 0;
}

int mayuscula(int codigo) {
    if (codigo < 0 || codigo > 255) return codigo;
    return codigoAnsi(caracterAnsi(codigo).toUpper());
}

}  // namespace

int SoloNumeros(int codigo) { return dejarPasar(codigo, "0123456789"); }
int SoloNumerosComaGuion(int codigo) { return dejarPasar(codigo, "0123456789,-"); }
int SoloNumerosComa(int codigo) { return dejarPasar(codigo, "0123456789,"); }
int Mayusculas(int codigo) { return mayuscula(codigo); }

int SoloAlfanumerico(int codigo) {
    if ((codigo >= 33 && codigo <= 47) || (codigo >= 58 && codigo <= 64) || (codigo >= 91 && codigo <= 95) ||
        (codigo >= 123 && codigo <= 163) || (codigo >= 166 && codigo <= 254))
        return 0;
    return mayuscula(codigo);
}

}  // namespace hipico
