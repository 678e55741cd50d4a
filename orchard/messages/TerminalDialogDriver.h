// Runs any dialog on a terminal: it writes the dialog's fields, each with a number, and reads the user's input
// line by line.
#pragma once

#include "CM/platform/dialog/CDialog.h"
#include "orchard/OrchardApi.h"

#include <istream>
#include <ostream>
#include <string>
#include <string_view>

namespace orchard {

/// Lists what can be typed, where N is the number of a field as shown:
///   N or a button's text   press the button (the first letters do); an empty line presses the default one
///   N                      toggle a check box
///   N TEXT                 fill in a text field; N alone reads lines up to a line with only a dot
///   N K                    choose option K, or select rows K of a list or items K of a tree (several with blanks)
///   N !K                   activate a row or an item         N ^K   sort a list by column K
///   N +K, N -K             open and close an item            N xK   toggle an item's check box
///   ?                      these rules                       q      close the dialog, if it can be closed
/// A dialog that only informs is written and ends at once.
class ORCHARD_API TerminalDialogDriver : public platform::DialogDriver {
  public:
    /// Both streams must outlive the driver. Control characters in what a dialog shows do not reach the output.
    TerminalDialogDriver(std::istream &input, std::ostream &output) : input_(input), output_(output) {}

    [[nodiscard]] bool run(CDialog &dialog) override;

  private:
    void act(CDialog &dialog, std::string_view typed);

    std::istream &input_;
    std::ostream &output_;
};

} // namespace orchard
