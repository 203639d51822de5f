# The control that docs/your-own-control.md builds: its blocks of C++ up to "Using it", one below the other.

set(WAINSCOT_GUIDE ${PROJECT_SOURCE_DIR}/docs/your-own-control.md)
set(WAINSCOT_GUIDE_CODE ${PROJECT_BINARY_DIR}/guide)
add_custom_command(OUTPUT ${WAINSCOT_GUIDE_CODE}/star_rating.h
    COMMAND ${PROJECT_SOURCE_DIR}/tools/guide-code ${WAINSCOT_GUIDE} ${WAINSCOT_GUIDE_CODE}/star_rating.h
    DEPENDS ${WAINSCOT_GUIDE} ${PROJECT_SOURCE_DIR}/tools/guide-code VERBATIM)
add_custom_target(guide-code DEPENDS ${WAINSCOT_GUIDE_CODE}/star_rating.h)
