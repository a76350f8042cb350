# The 32-bit component: built here, and run in a 32-bit Debian root.

testX86() {
    # The test programs come with the root that can run them.
    buildPreset x86 SylvexControl SylvexHost
    needArtifact "$buildDir/x86/SylvexControl.ocx"
    needArtifact "$buildDir/x86/SylvexHost.exe"
    runX86Tests
}

# 32-bit programs need a 32-bit Wine, which a 64-bit machine does not have: this is where a root
# made by debootstrap (i386) comes in, with build/x86 mounted in it and runTests called through
# chroot as the launcher.
runX86Tests() {
    say 'x86: cross-compiled; running it comes later'
}
