#pragma once

namespace swiftpatch {

class Form;

/// Paints a form's background: fades it from white to black, sets the drawing up and lays one of
/// a few colour schemes over it, chosen by the second of the minute. Pumps.
void PaintSplashBackground(Form& form);

}  // namespace swiftpatch
