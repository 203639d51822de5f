# The code that guides build: their blocks of C++ up to "Using it", one below the other.

set(WAINSCOT_GUIDE_CODE ${PROJECT_BINARY_DIR}/guide)
function(wainscot_guide_code GUIDE HEADER)
    set(GUIDE ${PROJECT_SOURCE_DIR}/docs/${GUIDE})
    add_custom_command(OUTPUT ${WAINSCOT_GUIDE_CODE}/${HEADER}
        COMMAND ${PROJECT_SOURCE_DIR}/tools/guide-code ${GUIDE} ${WAINSCOT_GUIDE_CODE}/${HEADER}
        DEPENDS ${GUIDE} ${PROJECT_SOURCE_DIR}/tools/guide-code VERBATIM)
endfunction()
wainscot_guide_code(your-own-control.md star_rating.h)
wainscot_guide_code(layout.md clip_form.h)
add_custom_target(guide-code DEPENDS ${WAINSCOT_GUIDE_CODE}/star_rating.h ${WAINSCOT_GUIDE_CODE}/clip_form.h)
