// The application object without which Qt ends the whole process as soon as it draws text. A host need not be
// a Qt program, so it is asked for before a document is loaded or drawn.
#pragma once

namespace tzsvg {

// Makes sure that there is a GUI application: the host's, or one without a display that is made here, once,
// on the thread that asks first, and that lives as long as the process, past every unload of the module. The
// process's locale stays as it was. False when the process has an application without a GUI (Qt allows no
// second one), or when Qt lacks the plug-in for working without a display. Callable from any thread.
bool ensureGuiApplication();

}  // namespace tzsvg
