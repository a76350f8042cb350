#pragma once

namespace sylvex::host {

class Form;
struct Options;

/// Does what the command line asks for, in a form that has just been shown, and closes the form when it should not
/// stay. Failures are written to the standard error and shown in the form.
void RunSession(Form& form, const Options& options);

}  // namespace sylvex::host
