<#
.SYNOPSIS
Builds and tests the library with Microsoft's compiler on this machine, and writes one report to send back.

.DESCRIPTION
Needs Visual Studio 2022, or 2019 from version 16.4 on, CMake 3.25, and PowerShell 5.1 or 7. In the top folder of the
project:

    powershell -ExecutionPolicy Bypass -File tools\check_windows.ps1 -GTestRoot C:\googletest

First it removes an earlier build\msvc-release and runs the workflow preset msvc-release. If GoogleTest or Python is
missing, it builds only the library and the examples. Then it installs the library below build\check_windows and builds
a host with that package: a release build, which must run, and a debug build, which must be refused. Outside build\ it
changes nothing, except that the tests write and remove C:\phyval.txt: without administrator's rights those tests fail.

docs\visual_studio.md says how to get GoogleTest.

.PARAMETER GTestRoot
Folder into which GoogleTest was installed. Not needed if CMake finds it.

.PARAMETER Report
File of the report.
#>
param(
    [string]$GTestRoot = '',
    [string]$Report = ''
)

Set-StrictMode -Version 2.0
$ErrorActionPreference = 'Stop'

$top = Split-Path -Parent $PSScriptRoot
if (-not $Report) {
    $Report = Join-Path $top 'build\check_windows\report.txt'
}
$Report = $ExecutionContext.SessionState.Path.GetUnresolvedProviderPathFromPSPath($Report)
if ($GTestRoot) {
    $env:GTest_ROOT = (Resolve-Path -LiteralPath $GTestRoot).ProviderPath
}
$env:VSLANG = '1033'  # English messages of cl: Ninja reads from them which headers a source includes
Set-Location -LiteralPath $top
foreach ($folder in 'build/check_windows', 'build/msvc-release') {
    if (Test-Path -LiteralPath $folder) {
        Remove-Item -LiteralPath $folder -Recurse -Force
    }
}
New-Item -ItemType Directory -Path 'build/check_windows/host' -Force | Out-Null
New-Item -ItemType Directory -Path (Split-Path -Parent $Report) -Force | Out-Null

$utf8 = New-Object System.Text.UTF8Encoding($true)
[System.IO.File]::WriteAllText($Report, '', $utf8)
$script:summary = @()

function Write-Line([string]$Line) {
    Write-Host $Line
    [System.IO.File]::AppendAllText($Report, $Line + "`r`n", $utf8)
}

function Write-Title([string]$Title) {
    Write-Line ''
    Write-Line "==== $Title"
}

# Runs a command line, reports its output, and returns its exit code. cmd.exe joins both outputs, because PowerShell 5.1
# would make an error of each line of the second. PowerShell adds the outer quotes, which cmd.exe removes.
function Invoke-Step([string]$Title, [string]$Command) {
    Write-Title $Title
    Write-Line "> $Command"
    & cmd.exe /d /s /c "$Command 2>&1" | ForEach-Object { Write-Line ([string]$_) }
    $code = $LASTEXITCODE
    Write-Line "(ended with $code)"
    $script:summary += "${Title}: ended with $code"
    return $code
}

function Write-File([string]$Title, [string]$File) {
    if (Test-Path -LiteralPath $File) {
        Write-Title $Title
        foreach ($line in Get-Content -LiteralPath $File -Encoding UTF8) {
            Write-Line $line
        }
    }
}

# ---- Microsoft's compiler for x64: from this command prompt, or from the newest Visual Studio

if ($env:VSCMD_ARG_TGT_ARCH -ne 'x64' -or -not (Get-Command 'cl.exe' -ErrorAction SilentlyContinue)) {
    $prompt = 'open the "x64 Native Tools Command Prompt" of Visual Studio and run this script there.'
    $vswhere = Join-Path ${env:ProgramFiles(x86)} 'Microsoft Visual Studio\Installer\vswhere.exe'
    if (-not (Test-Path -LiteralPath $vswhere)) {
        throw "There is no vswhere.exe: $prompt"
    }
    $visualStudio = & $vswhere -latest -products * -requires Microsoft.VisualStudio.Component.VC.Tools.x86.x64 `
        -property installationPath | Select-Object -First 1
    if (-not $visualStudio) {
        throw ('vswhere.exe finds no Visual Studio with C++ for x64: ' +
            "install the workload `"Desktop development with C++`", or $prompt")
    }
    $variables = Join-Path $visualStudio 'VC\Auxiliary\Build\vcvars64.bat'
    & cmd.exe /d /s /c "`"$variables`" >nul 2>&1 && set" | ForEach-Object {
        if ($_ -match '^([^=]+)=(.*)$') {
            Set-Item -LiteralPath "Env:$($Matches[1])" -Value $Matches[2]
        }
    }
    if (-not (Get-Command 'cl.exe' -ErrorAction SilentlyContinue)) {
        throw "vcvars64.bat does not provide cl.exe: $prompt"
    }
}

# ---- The machine

Write-Title 'Machine'
$system = Get-CimInstance -ClassName Win32_OperatingSystem
$user = New-Object Security.Principal.WindowsPrincipal([Security.Principal.WindowsIdentity]::GetCurrent())
$isAdministrator = $user.IsInRole([Security.Principal.WindowsBuiltInRole]::Administrator)
Write-Line "Windows: $($system.Caption) $($system.Version), $($system.OSArchitecture)"
Write-Line "PowerShell: $($PSVersionTable.PSVersion)"
Write-Line "User's language: $((Get-Culture).Name), decimal separator: $((Get-Culture).NumberFormat.NumberDecimalSeparator)"
Write-Line "Administrator: $isAdministrator"
Write-Line "GTest_ROOT: $env:GTest_ROOT"
# The exit codes do not matter: cl and rc fail if they have nothing to do. If a tool is missing, the build fails.
foreach ($command in 'cl', 'link /?', 'rc /?', 'cmake --version', 'ninja --version', 'python --version',
    'git rev-parse HEAD', 'git status --short') {
    $lines = @(& cmd.exe /d /s /c "$command 2>&1" | Select-Object -First 3)
    Write-Line "${command}: $($lines -join ' / ')"
}

# ---- The library and its tests

$library = 'build/msvc-release/bin/kelmo_Mestrel_Localizer.dll'
$workflow = Invoke-Step 'Workflow' 'cmake --workflow --preset msvc-release'
if ($workflow -ne 0 -and -not (Test-Path -LiteralPath $library)) {
    $configured = Invoke-Step 'Configure without tests' 'cmake --preset msvc-release -D KELMO_LOCALIZER_TESTS=OFF'
    if ($configured -eq 0) {
        Invoke-Step 'Build without tests' 'cmake --build --preset msvc-release' | Out-Null
    }
}
Write-File 'Tests that failed' 'build/msvc-release/Testing/Temporary/LastTestsFailed.log'
if ($workflow -ne 0) {
    Write-File 'Log of the tests' 'build/msvc-release/Testing/Temporary/LastTest.log'
}

# ---- The built files, and a host that uses them

if (Test-Path -LiteralPath $library) {
    Write-Title 'Files'
    foreach ($file in Get-ChildItem -Path 'build/msvc-release/bin/*.dll', 'build/msvc-release/lib/*.lib') {
        Write-Line "$($file.Name): $($file.Length) bytes"
    }
    Invoke-Step 'Needed libraries' "dumpbin /nologo /dependents $library" | Out-Null
    Invoke-Step 'Exports' "dumpbin /nologo /exports $library" | Out-Null
    $exported = @(& dumpbin.exe /nologo /exports $library | ForEach-Object {
        if ($_ -match '^\s+\d+\s+[0-9A-F]+\s+[0-9A-F]{8}\s+(\S+)') { $Matches[1] }
    })
    $listed = @(Get-Content -LiteralPath 'tests/abi/exported_names_microsoft.txt')
    $differences = @(Compare-Object -ReferenceObject $listed -DifferenceObject $exported -CaseSensitive)
    $script:summary += "Exports: $($exported.Count), with $($differences.Count) differences from the list"
    foreach ($difference in $differences) {
        Write-Line "$($difference.SideIndicator) $($difference.InputObject)"
    }

    Invoke-Step 'Installation' 'cmake --install build/msvc-release --prefix build/check_windows/installed' | Out-Null
    Copy-Item -LiteralPath 'tests/consumer/host/CMakeLists.txt', 'examples/print.h' -Destination 'build/check_windows/host'
    Copy-Item -LiteralPath 'examples/first_values.cpp' -Destination 'build/check_windows/host/host.cpp'
    $package = (Resolve-Path -LiteralPath 'build/check_windows').ProviderPath.Replace('\', '/') + '/installed'
    foreach ($type in 'Release', 'Debug') {
        $build = "build/check_windows/$type"
        Invoke-Step "$type host, configuration" ("cmake -S build/check_windows/host -B $build -G Ninja " +
            "-D CMAKE_C_COMPILER=cl -D CMAKE_CXX_COMPILER=cl -D CMAKE_BUILD_TYPE=$type " +
            "-D `"CMAKE_PREFIX_PATH=$package`"") | Out-Null
        $expected = @{ Release = 'which must succeed'; Debug = 'which must be refused' }[$type]
        $code = Invoke-Step "$type host, build, $expected" "cmake --build $build --verbose"
        if ($type -eq 'Release' -and $code -eq 0) {
            Invoke-Step 'Release host' 'build\check_windows\Release\host.exe' | Out-Null
        }
        if ($type -eq 'Debug' -and $code -eq 0) {
            $script:summary += 'WRONG: a debug host of the release library was not refused'
        }
    }
}

Write-Title 'Summary'
foreach ($line in $script:summary) {
    Write-Line $line
}
Write-Host ''
Write-Host "The report to send back: $Report"
exit $workflow
