#!/usr/bin/perl
# Expands check-out command lines: the peer of the library's expansion, with the same two passes and the same patterns.
#   perl expand.pl PROPERTIES UNITS LINES OUT
# PROPERTIES: lines of level, metaclass, key, value, tab separated (levels: 0 configuration, 1 component, 2 project,
# 3 installation); UNITS: one full file name on each line; LINES: the number of lines to expand, cycling through the
# units; OUT: file for the lines. Prints the seconds of the expansion, without reading and writing.
use strict;
use warnings;
use Cwd ();
use List::Util qw(first);
use Time::HiRes qw(clock_gettime CLOCK_MONOTONIC);

my ($properties_file, $units_file, $count, $out_file) = @ARGV;

my @levels = ({}, {}, {}, {});
my %facts;
open(my $in, '<', $properties_file) or die "$properties_file: $!";
while (my $line = <$in>) {
    chomp $line;
    my ($level, $metaclass, $key, $value) = split /\t/, $line, 4;
    if ($level eq 'fact') { $facts{$key} = $value; next }
    $levels[$level]{$metaclass}{$key} = $value;
}
close $in;

open($in, '<', $units_file) or die "$units_file: $!";
chomp(my @units = <$in>);
close $in;

my $variable = qr/\$\{?([a-zA-Z_][a-zA-Z0-9_]*)\}?/i;

sub find_property {
    my ($from, $metaclass, $key) = @_;
    for my $level ($from .. 3) {
        my $values = $levels[$level]{$metaclass} or next;
        return $values->{$key} if defined $values->{$key};
    }
    return undef;
}

sub tool_property {
    my ($key) = @_;
    my $found;
    my $provider = find_property(2, 'General', 'UseSCCtool');
    if (defined $provider && lc $provider eq 'yes') {
        $found = find_property(0, 'SCC', $key);
    } elsif (defined(my $tool = find_property(0, 'CMGeneral', 'CMTool'))) {
        $found = find_property(0, $tool, $key);
    }
    $found = find_property(0, 'CMGeneral', $key) unless defined $found;
    return $found;
}

# Both forms of each predefined variable, the escaped one first. A value is computed only if it is needed.
sub expand_predefined {
    my ($text) = @_;
    $text =~ s/[\\]\$OQROOT/$facts{root}/i;
    $text =~ s/\$OQROOT/$facts{root}/i;
    $text =~ s/[\\]\$projectname/$facts{projectname}/i;
    $text =~ s/\$projectname/$facts{projectname}/i;
    $text =~ s/[\\]\$currentdirectory/Cwd::getcwd()/ie;
    $text =~ s/\$currentdirectory/Cwd::getcwd()/ie;
    $text =~ s/[\\]\$orpdirectory/$facts{orpdirectory}/i;
    $text =~ s/\$orpdirectory/$facts{orpdirectory}/i;
    $text =~ s/[\\]\$projectunitdirname/$facts{projectunitdirname}/i;
    $text =~ s/\$projectunitdirname/$facts{projectunitdirname}/i;
    $text =~ s/[\\]\$temp/$facts{temp}/i;
    $text =~ s/\$temp/$facts{temp}/i;
    return $text;
}

# Finds the first conditional: its position and its three parts. It ends at the last parenthesis.
sub extract_condition {
    my ($source) = @_;
    my $start = index($source, '(');
    return if $start < 0;
    my $question = index($source, '?', $start);
    return if $question < 0;
    my $if = substr($source, $start + 1, $question - $start - 1);
    my $colon = index($source, ':', $question);
    my $end = rindex($source, ')');
    my ($then, $else);
    if ($colon < 0) {
        return if $end < $question;
        ($then, $else) = (substr($source, $question + 1, $end - $question - 1), '');
    } else {
        return if $end < $colon;
        $then = substr($source, $question + 1, $colon - $question - 1);
        $else = substr($source, $colon + 1, $end - $colon - 1);
    }
    s/^ +//, s/ +$// for $if, $then, $else;
    return ($start, $end, $if, $then, $else);
}

sub expand {
    my ($source, $arguments) = @_;
    return (1, '') if $source eq '';
    my $ok = 1;
    while (my ($start, $end, $if, $then, $else) = extract_condition($source)) {
        ($ok, my $value) = expand($if, $arguments);
        my $replacement = '';
        ($ok, $replacement) = expand($value ne '' ? $then : $else, $arguments) if $ok == 1;
        substr($source, $start, $end - $start + 1) = $replacement;
    }
    return (1, '') if $source eq '';
    my $previous = '';
    while ($source ne $previous && $source =~ $variable) {
        $previous = $source;
        my ($escaped, $name, $place) = ($&, $1, lc $1);
        $escaped =~ s/\$/\\\$/;
        my $argument = first { exists $_->{$place} } @$arguments;
        my $value = '';
        if ($argument) {
            ($ok, $value) = expand($argument->{$place}->(), $arguments) if $ok;
        } else {
            my $property = tool_property($name);
            my $found = 0;
            ($found, $value) = expand($property, $arguments) if defined $property;
            $ok = $ok && $found;
            if (!$found) {
                $value = expand_predefined($escaped);
                $value =~ s/\\\$/\$/;
                $ok = 1;
            }
        }
        $source =~ s/$escaped/$value/i;
    }
    $ok = 0 if $source eq $previous && $source ne '';
    return ($ok, $source);
}

sub unit_argument {
    my ($path) = @_;
    my $cut = rindex($path, '/');
    my $directory = $cut < 0 ? '' : substr($path, 0, $cut);
    my $file = substr($path, $cut + 1);
    return {
        unit => sub { $file },
        unitpath => sub { $directory eq '' ? $file : "$directory/$file" },
        unitdirpath => sub { $directory eq '' ? '.' : $directory },
    };
}

my $label = $facts{label};
my @arguments = (
    { mode => sub { tool_property('ReadWrite') } },
    { label => sub { $label =~ / / ? "\"$label\"" : $label } },
    { archive => sub { my $value = tool_property('CMArchive'); defined $value ? expand_predefined($value) : '' } },
);

my @lines;
my $start = clock_gettime(CLOCK_MONOTONIC);
for my $at (0 .. $count - 1) {
    push @arguments, unit_argument($units[$at % @units]);
    my ($ok, $line) = expand(tool_property('CheckOut'), \@arguments);
    pop @arguments;
    die "could not expand: $line\n" unless $ok;
    push @lines, $line;
}
printf "%.6f\n", clock_gettime(CLOCK_MONOTONIC) - $start;

open(my $out, '>', $out_file) or die "$out_file: $!";
print $out "$_\n" for @lines;
close $out;
