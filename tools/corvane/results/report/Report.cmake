# The page, style and scripts of the HTML report, compiled into the program.
set(three_folder /usr/share/javascript/three CACHE PATH "Folder of three.js, which draws the report's parts")
mark_as_advanced(three_folder)
set(three ${three_folder}/three.min.js ${three_folder}/examples/js/controls/OrbitControls.js)
foreach(file IN LISTS three)
    if(NOT EXISTS ${file})
        message(STATUS "No ${file}: reports draw parts without WebGL (package libjs-three)")
        set(three "")
        break()
    endif()
endforeach()

set(report ${CMAKE_CURRENT_SOURCE_DIR}/results/report)
set(scripts texts.js surface.js drawing.js solid.js detail.js report.js)
list(TRANSFORM scripts PREPEND ${report}/)
list(JOIN scripts "|" script_files)
list(JOIN three "|" three_files)
set(assets "kPage=${report}/page.html,kStyle=${report}/report.css,kScript=${script_files}")
string(APPEND assets ",kThree=${three_files},kThreeLicence=${report}/three-licence.txt")
set(report_assets ${CMAKE_CURRENT_BINARY_DIR}/ReportAssets.cpp)
add_custom_command(OUTPUT ${report_assets}
    COMMAND ${CMAKE_COMMAND} "-DOUTPUT=${report_assets}" "-DASSETS=${assets}" -P ${report}/embed.cmake
    DEPENDS ${report}/embed.cmake ${report}/page.html ${report}/report.css ${report}/three-licence.txt ${scripts}
    VERBATIM)
target_sources(corvane_results PRIVATE results/HtmlWriter.cpp ${report_assets})
