#pragma once

struct SDL_Window;

namespace wainscot {

/// Gives the window the picture that window managers show beside its title.
void setWindowIcon(SDL_Window* window);

} // namespace wainscot
