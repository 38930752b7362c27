// What the page does for us. The script that loads the module has these functions. Browsers only.
#pragma once

extern "C" {
// Shows a message in the page and returns at once. Texts are UTF-8.
void quarzelShowMessage(const char* title, const char* text);
// Opens the page's copy of a document, by the name of its file. Returns 0 if there is none.
int quarzelOpenDocument(const char* name);
// Tells that a file has been written: the page stores it, or hands it out if it is in the exchange
// folder.
void quarzelFileWritten(const char* path);
// Opens the browser's picker.
void quarzelAskForFile();
}
