# The program, and the platform's headers that it sees, name neither the toolkit nor the X server.
file(GLOB program ${ROOT}/Sources/*.h ${ROOT}/Sources/*.cpp)
file(GLOB headers ${ROOT}/Platform/CoreGraphics/*.h ${ROOT}/Platform/Foundation/*.h
     ${ROOT}/Platform/AppKit/*.h ${ROOT}/Platform/Carbon/*.h ${ROOT}/Platform/Combine/*.h
     ${ROOT}/Platform/QuartzCore/*.h ${ROOT}/Platform/ServiceManagement/*.h
     ${ROOT}/Platform/SwiftUI/*.h)
list(FILTER headers EXCLUDE REGEX "[+]Private[.]h$")
list(LENGTH program count)
if(count EQUAL 0)
    message(FATAL_ERROR "No sources under ${ROOT}.")
endif()
foreach(file IN LISTS program headers)
    file(STRINGS ${file} lines REGEX "include *[<\"](Q[A-Z]|qt|xcb|X11)|[^A-Za-z]Q[A-Z][A-Za-z]+[^A-Za-z(]|xcb_|[+]Private|/Qt/|Qt::")
    if(lines)
        message(SEND_ERROR "${file} names Qt or xcb: ${lines}")
    endif()
endforeach()
