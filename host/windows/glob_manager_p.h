#pragma once

#include "host/windows/backend.h"
#include "host/windows/glob_manager.h"
#include "host/windows/modal_flash_p.h"
#include "host/windows/modality_p.h"
#include "host/windows/popup_chain.h"
#include "host/windows/window_list_p.h"

namespace wainscot {

struct GlobManager::Parts {
    Parts(GlobManager& manager, Backend& backend)
        : popUps([&backend](bool wanted) { backend.setOutsidePresses(wanted); }), flash(manager) {}

    WindowList windows;
    PopUpChain popUps;
    Modality modality;
    ModalFlash flash;
};

/// How a window is to be opened.
struct GlobManager::Wish {
    /// Lower-left corner of the root.
    std::optional<XY<int>> place;
    TopLevelWindow const* owner = nullptr;
    TopLevelWindow::Kind kind = TopLevelWindow::Kind::ordinary;
    bool isModal = false;
};

} // namespace wainscot
