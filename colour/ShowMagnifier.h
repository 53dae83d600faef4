#pragma once
// Opens a standalone magnifier at the screen's bottom-left corner; a click on it closes it. Answers the
// magnifier, or null when there is no screen.

class Glob;

Glob* showMagnifier();
