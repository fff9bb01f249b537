// The fuzz targets: each takes any bytes and checks what must hold for every input.
#pragma once

#include "tests/fuzz/Fuzz.h"

namespace zt::fuzz {

void FuzzCommandLine(Bytes input);   // lines: the arguments
void FuzzMetadata(Bytes input);      // lines: name and value by turns, "+" before those of ADDMETA
void FuzzEcho(Bytes input);          // the process's whole command line
void FuzzRuntimeText(Bytes input);   // a text for the log
void FuzzFrame(Bytes input);         // bytes received; also the text of a frame to send
void FuzzResponse(Bytes input);      // the text of an answer
void FuzzNumber(Bytes input);        // a text that may begin with a number
void FuzzVersion(Bytes input);       // lines: a file version, a command, a product's name
void FuzzPaths(Bytes input);         // lines: two paths and a name
void FuzzSelection(Bytes input);     // a language or an id
void FuzzStoredSetting(Bytes input); // bytes of a registry value

struct Target {
    const char* name; // of its folders below seeds/ and found/
    void (*run)(Bytes input);
};

inline constexpr Target Targets[] = {
    {"command-line", FuzzCommandLine},
    {"metadata", FuzzMetadata},
    {"echo", FuzzEcho},
    {"runtime-text", FuzzRuntimeText},
    {"frame", FuzzFrame},
    {"response", FuzzResponse},
    {"number", FuzzNumber},
    {"version", FuzzVersion},
    {"paths", FuzzPaths},
    {"selection", FuzzSelection},
    {"stored-setting", FuzzStoredSetting},
};

} // namespace zt::fuzz
