// The modeller defines a macro Handle(Class) for its smart pointers, and every entity of the host's object
// model has an operation Handle(). This header, included ahead of the object model, lets both live: with
// an argument the macro is the modeller's, without one it is the plain name.
#pragma once

#include <Standard_Handle.hxx>

#undef Handle
#define BRENVIK_HANDLE_OF(Class) opencascade::handle<Class>
#define BRENVIK_HANDLE_() Handle()
#define Handle(...) BRENVIK_HANDLE_##__VA_OPT__(OF)(__VA_ARGS__)
