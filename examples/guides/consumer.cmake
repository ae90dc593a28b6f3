cmake_minimum_required(VERSION 3.25)
project(host LANGUAGES CXX)

find_package(channel 1.0 REQUIRED)

add_executable(host host.cpp)
target_compile_features(host PRIVATE cxx_std_20)
target_link_libraries(host PRIVATE channel::channel)
