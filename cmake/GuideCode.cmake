# What guides show is built: the blocks of C++ of a guide, one below the other, become a header.

set(WAINSCOT_GUIDE_CODE ${PROJECT_BINARY_DIR}/guide)
set(WAINSCOT_GUIDE_HEADERS)
function(wainscot_guide_code GUIDE HEADER)
    set(SOURCE ${PROJECT_SOURCE_DIR}/docs/${GUIDE}.md)
    set(TOOL ${PROJECT_SOURCE_DIR}/tools/guide-code)
    add_custom_command(OUTPUT ${WAINSCOT_GUIDE_CODE}/${HEADER}
        COMMAND ${TOOL} ${SOURCE} ${WAINSCOT_GUIDE_CODE}/${HEADER} DEPENDS ${SOURCE} ${TOOL} VERBATIM)
    set(WAINSCOT_GUIDE_HEADERS ${WAINSCOT_GUIDE_HEADERS} ${WAINSCOT_GUIDE_CODE}/${HEADER} PARENT_SCOPE)
endfunction()
wainscot_guide_code(your-own-control star_rating.h)
wainscot_guide_code(layout clip_form.h)
wainscot_guide_code(ownership ownership_examples.h)
wainscot_guide_code(text-entry text_entry_examples.h)
wainscot_guide_code(text-lines text_lines_examples.h)
wainscot_guide_code(menus menus_examples.h)
wainscot_guide_code(testing counter_test.h)
add_custom_target(guide-code DEPENDS ${WAINSCOT_GUIDE_HEADERS})
