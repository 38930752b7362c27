// What the page's module calls. The page gives the actions as `page` when it loads the module.
mergeInto(LibraryManager.library, {
  quarzelSend: function(what, index, value) { Module.page.send(what, index, value); },
  quarzelShowMessage: function(title, text) {
    Module.page.showMessage(UTF8ToString(title), UTF8ToString(text));
  },
  quarzelOpenDocument: function(name) {
    return Module.page.openDocument(UTF8ToString(name)) ? 1 : 0;
  },
  quarzelFileWritten: function(path) { Module.page.fileWritten(UTF8ToString(path)); },
  quarzelAskForFile: function() { Module.page.askForFile(); },
  quarzelShowPixels: function(pixels, left, top, width, height) {
    const bytes = HEAPU8.subarray(pixels, pixels + 4 * width * height);
    Module.page.showPixels(bytes, left, top, width, height);
  },
  quarzelSizeCanvas: function(width, height) { Module.page.sizeCanvas(width, height); },
  quarzelFocusCanvas: function() { Module.page.focusCanvas(); },
  quarzelHidePointer: function(hidden) { Module.page.hidePointer(hidden !== 0); },
});
