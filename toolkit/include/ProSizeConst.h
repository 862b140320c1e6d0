// Buffer sizes, the terminating zero included, and the text buffers made of them.
#pragma once

#include <stddef.h>

#define PRO_LINE_SIZE 81
#define PRO_PATH_SIZE 260
#define PRO_COMMENT_SIZE 256
#define PRO_VALUE_SIZE 256
// Releases differ in this one; never write the number out.
#define PRO_MDLNAME_SIZE 180
#define PRO_NAME_SIZE 32
#define PRO_TYPE_SIZE 4
#define PRO_EXTENSION_SIZE 4
#define PRO_MDLEXTENSION_SIZE 32
#define PRO_VERSION_SIZE 4
#define PRO_MAX_ASSEM_LEVEL 25
#define PRO_FEATREF_KEY_SIZE 81

#define PRO_FILE_NAME_SIZE (PRO_NAME_SIZE + PRO_TYPE_SIZE + PRO_VERSION_SIZE)
#define PRO_FILE_MDLNAME_SIZE (PRO_MDLNAME_SIZE + PRO_MDLEXTENSION_SIZE + PRO_VERSION_SIZE)
#define PRO_FAMILY_NAME_SIZE (PRO_NAME_SIZE + PRO_NAME_SIZE + 2)
#define PRO_FAMILY_MDLNAME_SIZE (PRO_MDLNAME_SIZE + PRO_MDLNAME_SIZE + 2)
#define PRO_FAMTAB_FIELDNAME_SIZE PRO_PATH_SIZE

// char texts are UTF-8, wchar_t texts UTF-16.
typedef char ProCharName[PRO_NAME_SIZE];
typedef char ProCharLine[PRO_LINE_SIZE];
typedef char ProCharPath[PRO_PATH_SIZE];
typedef wchar_t ProName[PRO_NAME_SIZE];
typedef wchar_t ProLine[PRO_LINE_SIZE];
typedef wchar_t ProPath[PRO_PATH_SIZE];
typedef wchar_t ProComment[PRO_COMMENT_SIZE];
typedef wchar_t ProFileName[PRO_FILE_NAME_SIZE];
typedef wchar_t ProMdlName[PRO_MDLNAME_SIZE];
typedef wchar_t ProMdlExtension[PRO_MDLEXTENSION_SIZE];
typedef wchar_t ProMdlFileName[PRO_FILE_MDLNAME_SIZE];
typedef wchar_t ProFamilyName[PRO_FAMILY_NAME_SIZE];
typedef wchar_t ProFamilyMdlName[PRO_FAMILY_MDLNAME_SIZE];
