# shellcheck shell=bash
# One function for each library of the Windows prefix: build_NAME, with "-" and digits as they are in `versions` but "_"
# for "-". It runs in an empty folder, with the unpacked sources in $source, and installs into $prefix. Libraries that
# the program and the SDK's library both use are shared (FFmpeg, OpenCV, Qt); the others are static.

with_cmake() {
    cmake -G Ninja -S "$1" -B . -DCMAKE_TOOLCHAIN_FILE="$windows_here/toolchain.cmake" -DCMAKE_BUILD_TYPE=Release \
        -DCMAKE_INSTALL_PREFIX="$prefix" -DCMAKE_POSITION_INDEPENDENT_CODE=ON -DBUILD_SHARED_LIBS=OFF "${@:2}"
    ninja -j "$jobs"
    ninja install
}

with_configure() {
    if [[ ! -x "$1/configure" ]]; then
        (cd "$1" && autoreconf --install --force)
    fi
    "$1/configure" --host="$windows_host" --prefix="$prefix" --enable-static --disable-shared "${@:2}"
    make -j "$jobs"
    make install
}

# write_pc NAME VERSION LIBRARIES [FLAGS]: for those that bring no such file of their own, or one that does not say
# what their static library wants.
write_pc() {
    mkdir -p "$prefix/lib/pkgconfig"
    printf '%s\n' "prefix=$prefix" "Name: $1" "Description: $1" "Version: $2" "Libs: -L\${prefix}/lib $3" \
        "Cflags: -I\${prefix}/include ${4:-}" >"$prefix/lib/pkgconfig/$1.pc"
}

build_zlib() {
    # Debian's sources come without what is there for Windows.
    (cd "$source" && "$CC" -O2 -c adler32.c compress.c crc32.c deflate.c gzclose.c gzlib.c gzread.c gzwrite.c \
        infback.c inffast.c inflate.c inftrees.c trees.c uncompr.c zutil.c && "$AR" rcs libz.a ./*.o)
    install -Dm644 "$source/libz.a" "$prefix/lib/libz.a"
    install -Dm644 -t "$prefix/include" "$source/zlib.h" "$source/zconf.h"
    write_pc zlib 1.2.13 -lz
}

build_sqlite3() {
    # All in one source first, with tools that run here.
    CC=gcc "$source/configure" --disable-readline --disable-tcl
    make -j "$jobs" sqlite3.c shell.c
    "$CC" -O2 -DSQLITE_THREADSAFE=1 -DSQLITE_ENABLE_COLUMN_METADATA=1 -DSQLITE_ENABLE_UNLOCK_NOTIFY=1 -c sqlite3.c
    "$AR" rcs libsqlite3.a sqlite3.o
    install -Dm644 libsqlite3.a "$prefix/lib/libsqlite3.a"
    # Tests look into stores with it.
    "$CC" -O2 -s shell.c sqlite3.o -o sqlite3.exe
    install -Dm755 sqlite3.exe "$prefix/bin/sqlite3.exe"
    install -Dm644 -t "$prefix/include" sqlite3.h "$source/src/sqlite3ext.h"
    write_pc sqlite3 3.40.1 -lsqlite3
}

build_libsodium() {
    with_configure "$source"
    write_pc libsodium 1.0.18 -lsodium -DSODIUM_STATIC
}

build_freetype() {
    with_cmake "$source" -DFT_DISABLE_BZIP2=ON -DFT_DISABLE_BROTLI=ON -DFT_DISABLE_HARFBUZZ=ON -DFT_DISABLE_PNG=ON \
        -DFT_REQUIRE_ZLIB=ON
}

build_muparser() {
    with_cmake "$source" -DENABLE_SAMPLES=OFF -DENABLE_OPENMP=OFF -DENABLE_WIDE_CHAR=OFF
    write_pc muparser 2.3.3 -lmuparser -DMUPARSER_STATIC
}

build_qrencode() { with_cmake "$source" -DWITH_TOOLS=NO -DWITHOUT_PNG=YES; }

build_pugixml() { with_cmake "$source"; }

build_nlohmann_json3() { with_cmake "$source" -DJSON_BuildTests=OFF; }

build_libmodbus() {
    # Its own check for functions of the C library does not hold when cross-compiling.
    ac_cv_func_malloc_0_nonnull=yes with_configure "$source" --disable-tests --without-documentation
    # shellcheck disable=SC2016 # its own variable
    write_pc libmodbus 3.1.6 '-lmodbus -lws2_32' '-I${prefix}/include/modbus'
}

build_curl() {
    # Windows brings its own TLS and certificates.
    with_cmake "$source" -DBUILD_CURL_EXE=OFF -DCURL_USE_SCHANNEL=ON -DCURL_USE_LIBSSH2=OFF -DCURL_USE_LIBPSL=OFF \
        -DUSE_LIBIDN2=OFF -DUSE_NGHTTP2=OFF -DBUILD_TESTING=OFF -DCURL_DISABLE_LDAP=ON -DCURL_DISABLE_LDAPS=ON \
        -DHTTP_ONLY=ON -DENABLE_MANUAL=OFF
    write_pc libcurl 7.88.1 '-lcurl -lz -lws2_32 -lcrypt32 -lbcrypt -ladvapi32' -DCURL_STATICLIB
}

build_mosquitto() {
    with_cmake "$source" -DWITH_TLS=OFF -DWITH_BROKER=OFF -DWITH_CLIENTS=OFF -DWITH_APPS=OFF -DWITH_PLUGINS=OFF \
        -DWITH_STATIC_LIBRARIES=ON -DWITH_THREADING=OFF -DDOCUMENTATION=OFF -DWITH_LIB_CPP=OFF -DWITH_CJSON=OFF
    write_pc libmosquitto 2.0.11 '-lmosquitto_static -lws2_32' -DLIBMOSQUITTO_STATIC
}

build_soci() {
    with_cmake "$source" -DSOCI_TESTS=OFF -DSOCI_SHARED=OFF -DSOCI_STATIC=ON -DSOCI_EMPTY=OFF -DSOCI_CXX11=ON \
        -DWITH_BOOST=ON -DBoost_INCLUDE_DIR="$prefix/include" -DWITH_SQLITE3=ON -DWITH_DB2=OFF -DWITH_FIREBIRD=OFF \
        -DWITH_MYSQL=OFF -DWITH_ODBC=OFF -DWITH_ORACLE=OFF -DWITH_POSTGRESQL=OFF \
        -DSQLITE3_INCLUDE_DIR="$prefix/include" -DSQLITE3_LIBRARY="$prefix/lib/libsqlite3.a"
}

build_x264() {
    "$source/configure" --host="$windows_host" --cross-prefix="$windows_host-" --prefix="$prefix" --enable-static \
        --disable-cli --disable-opencl --bit-depth=8
    make -j "$jobs"
    make install
}

build_ffmpeg() {
    # What recordings, cameras and pictures need, and what people have on their disks. The commands, with their devices
    # and filters, are what tests of recordings make videos with and judge them by; the program goes without.
    "$source/configure" --arch=x86 --target-os=mingw32 --cross-prefix="$windows_host-" --prefix="$prefix" \
        --pkg-config=pkg-config --pkg-config-flags=--static --enable-gpl --enable-libx264 --enable-shared \
        --disable-static --disable-ffplay --disable-doc --disable-postproc --disable-indevs --disable-outdevs \
        --enable-indev=lavfi --disable-filters --enable-filter=testsrc2,scale,setpts,fps,aresample --disable-autodetect \
        --enable-zlib --enable-w32threads --disable-debug
    make -j "$jobs"
    make install
}

build_opencv() {
    with_cmake "$source" -DBUILD_SHARED_LIBS=ON -DBUILD_LIST=core,imgproc,calib3d,features2d,flann,imgcodecs,videoio \
        -DBUILD_TESTS=OFF -DBUILD_PERF_TESTS=OFF -DBUILD_EXAMPLES=OFF -DBUILD_opencv_apps=OFF -DBUILD_JAVA=OFF \
        -DBUILD_opencv_python3=OFF -DWITH_FFMPEG=OFF -DWITH_GSTREAMER=OFF -DWITH_DSHOW=OFF -DWITH_MSMF=OFF \
        -DWITH_OPENCL=OFF -DWITH_IPP=OFF -DWITH_ITT=OFF -DWITH_QUIRC=OFF -DWITH_PROTOBUF=OFF -DWITH_ADE=OFF \
        -DWITH_TIFF=OFF -DWITH_WEBP=OFF -DWITH_OPENJPEG=OFF -DWITH_JASPER=OFF -DWITH_OPENEXR=OFF -DWITH_JPEG=OFF \
        -DWITH_PNG=OFF -DWITH_IMGCODEC_HDR=OFF -DWITH_EIGEN=OFF -DWITH_LAPACK=OFF -DWITH_WIN32UI=OFF \
        -DWITH_DIRECTX=OFF -DOPENCV_GENERATE_PKGCONFIG=OFF -DBUILD_ZLIB=OFF -DZLIB_INCLUDE_DIR="$prefix/include" \
        -DZLIB_LIBRARY="$prefix/lib/libz.a" -DENABLE_PRECOMPILED_HEADERS=OFF
}

build_zbar() {
    # Its configuration asks for GNU's libiconv, which Debian has no source package of; of all that it can do only the
    # scanner is wanted.
    local part numbers=(0 23 92)
    for part in EAN DATABAR CODE128 CODE93 CODE39 CODABAR I25 QRCODE SQCODE; do
        printf '#define ENABLE_%s 1\n' "$part"
    done >config.h
    printf '#define %s\n' "ZBAR_VERSION_MAJOR ${numbers[0]}" "ZBAR_VERSION_MINOR ${numbers[1]}" \
        "ZBAR_VERSION_PATCH ${numbers[2]}" 'HAVE_INTTYPES_H 1' 'HAVE_SYS_TIME_H 1' >>config.h
    cp "$windows_here/iconv/iconv.h" .
    local from="$source/zbar" file
    for file in "$from"/{config,error,symbol,image,convert,refcnt,img_scanner,scanner,decoder,misc,sqcode}.c \
        "$from"/decoder/{ean,databar,code128,code93,code39,codabar,i25,qr_finder,sq_finder}.c "$from"/qrcode/*.c \
        "$windows_here/iconv/iconv.c"; do
        "$CC" -O2 -DNDEBUG -D_WIN32_WINNT=0x0601 -I. -I"$from" -I"$source/include" -c "$file"
    done
    "$AR" rcs libzbar.a ./*.o
    install -Dm644 libzbar.a "$prefix/lib/libzbar.a"
    mkdir -p "$prefix/include/zbar"
    cp "$source/include/zbar.h" "$prefix/include/"
    cp "$source"/include/zbar/*.h "$prefix/include/zbar/"
    write_pc zbar 0.23.92 -lzbar
}

build_qtbase_opensource_src() {
    # Names of files have two cases here.
    sed -i 's/-lSecur32/-lsecur32/; s/-lCrypt32/-lcrypt32/' "$source/src/network/ssl/ssl.pri"
    # What is configured already is left so: it would be compiled anew.
    [[ -f Makefile ]] || "$source/configure" -opensource -confirm-license -xplatform win32-g++ \
        -device-option CROSS_COMPILE="$windows_host-" -prefix "$prefix/qt" -release -opengl desktop \
        -no-feature-tabletevent -no-feature-direct2d -no-feature-vulkan -no-dbus -no-icu -no-openssl -schannel \
        -nomake examples -nomake tests -qt-zlib -qt-libpng -qt-libjpeg -qt-freetype -qt-harfbuzz -qt-pcre \
        -sql-sqlite -system-sqlite -I "$prefix/include" -L "$prefix/lib" -no-pch
    make -j "$jobs"
    make install
}

with_qmake() {
    "$prefix/qt/bin/qmake" "$source"
    make -j "$jobs"
    make install
}
build_qtsvg_opensource_src() { with_qmake; }
build_qtcharts_opensource_src() { with_qmake; }
build_qtmultimedia_opensource_src() { with_qmake; }
