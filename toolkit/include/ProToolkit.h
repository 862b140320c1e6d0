// Basic types every toolkit header builds on.
#pragma once

#include <stddef.h>
#include <wchar.h>

#ifdef __cplusplus
#define PRO_BEGIN_C_DECLS extern "C" {
#define PRO_END_C_DECLS }
#else
#define PRO_BEGIN_C_DECLS
#define PRO_END_C_DECLS
#endif

// Marks the few inputs the toolkit promises not to change.
#define PRO_CONST_ARG const

// "No value", "append" or "the current one", as the function says.
#define PRO_VALUE_UNUSED (-1)

#include <ProSizeConst.h>
#include <ProToolkitErrors.h>

PRO_BEGIN_C_DECLS

typedef enum ProBooleans { PRO_B_FALSE = 0, PRO_B_TRUE = 1 } ProBoolean, ProBool;

// The application's own pointer, handed back to its callbacks untouched.
typedef void* ProAppData;

// Stands for any callback; the real type depends on what is registered.
typedef int (*ProFunction)(void);

// Points are rows: rows 0 to 2 are the axes, row 3 the origin, column 3 is 0 0 0 1.
typedef double ProMatrix[4][4];
typedef double ProVector[3];
typedef double Pro3dPnt[3];
typedef double ProPoint3d[3];
typedef double Pro2dPnt[2];
typedef double ProUvParam[2];

PRO_END_C_DECLS

static_assert(sizeof(wchar_t) == 2, "texts are UTF-16");
static_assert(sizeof(ProName) == 64 && sizeof(ProLine) == 162 && sizeof(ProPath) == 520, "buffers by size");
static_assert(sizeof(ProBoolean) == 4, "a truth value is 32 bits wide");
