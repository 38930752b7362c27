# Turns the drawing of a control into the SVG of a strip, with all frames one above the other.
# cmake -DPICTURE=knob.svg -DFRAMES=101 -DSTRIP=knob_strip.svg -P make_strip.cmake
#
# PICTURE shows the control at its lowest value. Its sides are even numbers of pixels. Its groups:
#   still    is the same in every frame
#   growing  holds paths of length 100; each frame draws the share that matches its value
#   turning  turns about the centre, by 270 degrees from the first frame to the last
cmake_minimum_required(VERSION 3.25)

set(kSweep 270)

file(READ "${PICTURE}" picture)
if(NOT picture MATCHES "<svg[^>]* width=\"([0-9]+)\" height=\"([0-9]+)\"[^>]*>")
    message(FATAL_ERROR "${PICTURE}: no <svg ... width=\"W\" height=\"H\">")
endif()
set(width ${CMAKE_MATCH_1})
set(height ${CMAKE_MATCH_2})
math(EXPR middle_x "${width} / 2")
math(EXPR middle_y "${height} / 2")
math(EXPR strip_height "${height} * ${FRAMES}")
math(EXPR twice_last "(${FRAMES} - 1) * 2")

# Sets VARIABLE to WHOLE * INDEX / (FRAMES - 1), with three decimals. WHOLE is an integer.
function(share variable whole index)
    math(EXPR thousandths "(2000 * ${whole} * ${index} + ${twice_last} / 2) / ${twice_last}")
    math(EXPR units "${thousandths} / 1000")
    math(EXPR rest "${thousandths} % 1000 + 1000")
    string(SUBSTRING ${rest} 1 3 decimals)
    set(${variable} "${units}.${decimals}" PARENT_SCOPE)
endfunction()

string(REGEX REPLACE "^.*<svg[^>]*>" "" drawing "${picture}")
string(REGEX REPLACE "</svg>[ \n]*$" "" drawing "${drawing}")
set(strip "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"${width}\" height=\"${strip_height}\">
<defs>${drawing}</defs>\n")
math(EXPR last "${FRAMES} - 1")
foreach(index RANGE ${last})
    math(EXPR top "${index} * ${height}")
    share(angle ${kSweep} ${index})
    share(percent 100 ${index})
    string(APPEND strip "<g transform=\"translate(0 ${top})\"><use href=\"#still\"/>")
    if(drawing MATCHES "id=\"growing\"" AND index GREATER 0)
        string(APPEND strip "<use href=\"#growing\" stroke-dasharray=\"${percent} 200\"/>")
    endif()
    if(drawing MATCHES "id=\"turning\"")
        string(APPEND strip "<use href=\"#turning\""
            " transform=\"rotate(${angle} ${middle_x} ${middle_y})\"/>")
    endif()
    string(APPEND strip "</g>\n")
endforeach()
file(WRITE "${STRIP}" "${strip}</svg>\n")
