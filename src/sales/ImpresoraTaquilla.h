#pragma once

#include "sales/TicketPrinter.h"

#include <optional>

namespace hipico {

class Context;

// The booth's printer as the session's local settings describe it, and the
// last piece it printed (or failed to print) for a reprint.
class ImpresoraTaquilla {
public:
    explicit ImpresoraTaquilla(Context& ctx) : ctx_(ctx) {}

    // The graphic mode ("WINDOWS2:").
    bool grafico() const;
    // Prints the piece when this machine prints tickets; a failure is told
    // to the user ("IMPRESORA").
    bool imprimir(const Impreso& impreso);
    bool reimprimir();

private:
    Context& ctx_;
    std::optional<Impreso> ultimo_;
};

}  // namespace hipico
