#pragma once

namespace hipico {

class WindowRegistry;

// Registers every window the program has under its main-menu entry.
// A factory returns a new window, not yet shown (or nullptr when it will not
// open); the main menu shows it inside itself, and shows that same window
// again on the next click while it stays open. The auction boards register
// under their own names ("Form_Subasta_2T", "Form_Subasta_2T_800",
// "Form_Subasta_3T", "Form_Subasta_4T", "Form_Subasta_5T",
// "Form_SubastaINT_2T"): the menu's auction entry opens the one the group's
// number of tables chooses. "imp_tfactual" is the report window of the
// current race's fixed-table information, opened after the menu refilled
// rpt_caballos_tf.
void registrarVentanas(WindowRegistry& registro);

}  // namespace hipico
