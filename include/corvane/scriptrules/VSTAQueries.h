#pragma once

#include <corvane/base/Export.h>

// Whether rules written with Visual Studio Tools for Applications can be offered, and which form of
// the add-in is installed beside the library. Each query answers through its argument, and does
// nothing for a null one; what cannot be looked up counts as no. They may run on any thread.

extern "C" {

/// True when the registry says that the tools are installed on this machine.
CORVANE_EXPORT void IsVSTAInstalled(bool* installed);
/// The same as IsVSTAInstalled. Whether the product may use them is CanUseVSTARules alone; a caller
/// that offers such rules asks both.
CORVANE_EXPORT void AreVSTARulesSupported(bool* supported);
/// True when the tools have a host entry for this product.
CORVANE_EXPORT void CanUseVSTARules(bool* usable);
/// True when an add-in for Creo Parametric lies in the library's folder: a module that fits
/// "QORProeAddinCreo*u.dll", whatever its case. On POSIX it has the form of other modules, as
/// "QORProeAddinCreo4u.so" or "libQORProeAddinCreo4u.so"; a ".dll" counts as it does for them.
CORVANE_EXPORT void IsCorvaneForCreoParametric(bool* creo);
}
